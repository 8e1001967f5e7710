#include "Support/Tables.hpp"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <limits>
#include <sstream>

#include "Support/Suite.hpp"
#include "Support/Timing.hpp"

namespace KorvaniBenchmarks {

namespace {

constexpr const char* kNothing = "-";

std::vector<std::string> partsOf(const std::string& name) {
  std::vector<std::string> parts;
  std::istringstream text(name);
  for (std::string part; std::getline(text, part, '/');) parts.push_back(part);
  return parts;
}

/// Three digits that count.
std::string rounded(double number) {
  const int decimals = number < 10 ? 2 : number < 100 ? 1 : 0;
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << number;
  return text.str();
}

std::string shownTime(double time) {
  if (time < 1e3) return rounded(time) + " ns";
  if (time < 1e6) return rounded(time / 1e3) + " us";
  if (time < 1e9) return rounded(time / 1e6) + " ms";
  return rounded(time / 1e9) + " s";
}

/// 100000 as 100,000.
std::string shownSize(std::size_t size) {
  std::string digits = std::to_string(size);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, 1, ',');
  }
  return digits;
}

template <class Item>
void addOnce(std::vector<Item>& items, const Item& item) {
  if (std::find(items.begin(), items.end(), item) == items.end()) items.push_back(item);
}

double timeOf(const std::map<std::string, double>& times, const std::string& contestant) {
  const auto found = times.find(contestant);
  return found == times.end() ? 0 : found->second;
}

/// The least time of all but the engine; 0 when there is none.
double bestPeer(const std::map<std::string, double>& times) {
  double best = std::numeric_limits<double>::infinity();
  for (const auto& [contestant, time] : times) {
    if (contestant != kEngine) best = std::min(best, time);
  }
  return best == std::numeric_limits<double>::infinity() ? 0 : best;
}

std::string shownRatio(double numerator, double denominator) {
  if (numerator <= 0 || denominator <= 0) return kNothing;
  return rounded(numerator / denominator) + "x";
}

}  // namespace

bool Tables::ReportContext(const Context& /*context*/) { return true; }

void Tables::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    if (run.error_occurred) {
      std::cerr << run.benchmark_name() << ": " << run.error_message << '\n';
      failed_ = true;
      continue;
    }
    add(partsOf(run.run_name.function_name), run);
  }
}

void Tables::add(const std::vector<std::string>& name, const Run& run) {
  Table& table = tableCalled(name.at(0));
  MeasuredRow& row = rowOf(table, name.at(1), std::stoul(name.at(2)));
  const std::string& contestant = name.at(3);
  const double time = run.counters.at(kTime).value;
  addOnce(table.contestants, contestant);
  row.times[contestant] = time;
  for (const auto& [counter, value] : run.counters) {
    if (counter == kTime || contestant != kEngine) continue;
    addOnce(table.counters, counter);
    row.further[counter] = value.value;
  }
  std::cerr << table.name << ", " << row.data << ", " << shownSize(row.size) << ", " << contestant
            << ": " << shownTime(time) << '\n';
}

Tables::Table& Tables::tableCalled(const std::string& name) {
  const auto found = std::find_if(tables_.begin(), tables_.end(),
                                  [&](const Table& table) { return table.name == name; });
  if (found != tables_.end()) return *found;
  tables_.push_back({name, {}, {}, {}});
  return tables_.back();
}

Tables::MeasuredRow& Tables::rowOf(Table& table, const std::string& data, std::size_t size) {
  for (MeasuredRow& row : table.rows) {
    if (row.data == data && row.size == size) return row;
  }
  table.rows.push_back({data, size, {}, {}});
  return table.rows.back();
}

void Tables::Finalize() {
  for (const Table& table : tables_) print(table);
}

void Tables::print(const Table& table) {
  std::cout << "### " << table.name << "\n\n|  | size |";
  std::string rule = "|---|---:|";
  const auto addColumn = [&](const std::string& title) {
    std::cout << ' ' << title << " |";
    rule += "---:|";
  };
  for (const std::string& contestant : table.contestants) addColumn(contestant);
  if (table.contestants.size() > 1) addColumn("best other / engine");
  addColumn("growth");
  for (const std::string& counter : table.counters) addColumn(counter);
  std::cout << '\n' << rule << '\n';
  const MeasuredRow* above = nullptr;
  for (const MeasuredRow& row : table.rows) {
    printRow(table, row, above && above->data == row.data ? above : nullptr);
    above = &row;
  }
  std::cout << std::endl;
}

void Tables::printRow(const Table& table, const MeasuredRow& row, const MeasuredRow* above) {
  const double engine = timeOf(row.times, kEngine);
  std::cout << "| " << row.data << " | " << shownSize(row.size) << " |";
  for (const std::string& contestant : table.contestants) {
    const double time = timeOf(row.times, contestant);
    std::cout << ' ' << (time > 0 ? shownTime(time) : kNothing) << " |";
  }
  if (table.contestants.size() > 1) {
    std::cout << ' ' << shownRatio(bestPeer(row.times), engine) << " |";
  }
  std::cout << ' ' << (above ? shownRatio(engine, timeOf(above->times, kEngine)) : kNothing)
            << " |";
  for (const std::string& counter : table.counters) {
    const auto found = row.further.find(counter);
    std::cout << ' ' << (found == row.further.end() ? kNothing : rounded(found->second)) << " |";
  }
  std::cout << '\n';
}

}  // namespace KorvaniBenchmarks
