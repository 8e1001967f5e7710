#include "FloorPlan/ConnectionTable.hpp"

#include <array>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string_view>

#include "Building/JsonText.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

struct Row {
  ConnectionKind kind;
  std::string_view name;
  const char* type;  ///< null: none
  double multiplicator;
  bool barrierFree;
};

// Costs are per metre of plain walking, 1.5 m/s. Lengths of ways between levels count 3 m of
// height a level.
constexpr std::array<Row, 8> kRows{{
    {ConnectionKind::path, "path", nullptr, 1, true},
    // Opening a door takes no longer than a step or two, and instructions that name each door
    // hide those that matter: no type.
    {ConnectionKind::door, "door", nullptr, 1, true},
    // On stairs people make about 0.8 m/s along the slope.
    {ConnectionKind::stairs, "stairs", "stairs", 1.8, false},
    // About 0.65 m/s for those who stand, more than twice that for those who walk; rather this
    // than stairs of the same length.
    {ConnectionKind::escalator, "escalator", "escalator", 1.4, false},
    // Faster than walking for those who walk on it, slower for those who stand.
    {ConnectionKind::travelator, "travelator", "travelator", 0.9, true},
    // A lift costs its waiting, not its length: a level is 3 m of shaft, 24 m of walking, 16 s.
    {ConnectionKind::elevator, "elevator", "elevator", 8, true},
    // Slower uphill than on the flat, and still the way for wheels.
    {ConnectionKind::ramp, "ramp", "ramp", 1.2, true},
    // Only where there is no other way.
    {ConnectionKind::ladder, "ladder", "ladder", 5, false},
}};

const Row* rowNamed(const std::string& name) {
  for (const Row& row : kRows) {
    if (row.name == name) return &row;
  }
  return nullptr;
}

std::string kindNames() {
  std::string names;
  for (const Row& row : kRows) {
    if (!names.empty()) names += &row == &kRows.back() ? " or " : ", ";
    names += row.name;
  }
  return names;
}

class TableFile {
 public:
  explicit TableFile(const std::filesystem::path& path) : name_(path.string()) {}

  Json read() const {
    std::ifstream stream(name_, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf())) throw InputError(name_ + ": cannot be read");
    try {
      return Json::parse(text.str());
    } catch (const Json::exception& error) {
      throw InputError(name_ + ": not JSON: " + error.what());
    }
  }

  [[noreturn]] void fail(const std::string& subject, const std::string& found,
                         const std::string& expected) const {
    throw InputError(name_ + ": " + (subject.empty() ? "" : subject + ": ") + "found " + found +
                     ", expected " + expected);
  }

  void change(Connection& row, const std::string& kind, const Json& members) const {
    if (!members.is_object()) fail(kind, brief(members), "an object");
    for (const auto& [name, value] : members.items()) change(row, kind, name, value);
  }

 private:
  void change(Connection& row, const std::string& kind, const std::string& name,
              const Json& value) const {
    std::string subject = kind;
    subject.append(".").append(name);
    if (name == "type") {
      if (!value.is_string() && !value.is_null()) fail(subject, brief(value), "a string or null");
      row.type = value.is_null() ? std::nullopt : std::optional(value.get<std::string>());
    } else if (name == "multiplicator") {
      const double number = value.is_number() ? value.get<double>() : 0;
      if (!(number > 0) || !std::isfinite(number)) fail(subject, brief(value), "a number above 0");
      row.multiplicator = number;
    } else if (name == "barrierFree") {
      if (!value.is_boolean()) fail(subject, brief(value), "true or false");
      row.barrierFree = value.get<bool>();
    } else {
      fail(subject, "an unknown member", "type, multiplicator or barrierFree");
    }
  }

  std::string name_;
};

}  // namespace

ConnectionTable ConnectionTable::standard() {
  ConnectionTable table;
  for (const Row& row : kRows) {
    Connection connection;
    if (row.type != nullptr) connection.type = row.type;
    connection.multiplicator = row.multiplicator;
    connection.barrierFree = row.barrierFree;
    table.rows_.emplace(row.kind, std::move(connection));
  }
  return table;
}

ConnectionTable ConnectionTable::withFile(const std::filesystem::path& path) {
  ConnectionTable table = standard();
  const TableFile file(path);
  const Json rows = file.read();
  if (!rows.is_object()) file.fail("", brief(rows), "an object of kinds of connection");
  for (const auto& [kind, members] : rows.items()) {
    const Row* row = rowNamed(kind);
    if (row == nullptr) file.fail("", "the kind " + inQuotes(kind), kindNames());
    file.change(table.rows_.at(row->kind), kind, members);
  }
  return table;
}

const Connection& ConnectionTable::of(ConnectionKind kind) const { return rows_.at(kind); }

}  // namespace KorvaniTools
