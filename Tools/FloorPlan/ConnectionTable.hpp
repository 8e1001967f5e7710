#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "FloorPlan/FloorPlan.hpp"

namespace KorvaniTools {

/// What an edge of some kind costs, and who can use it.
struct Connection {
  std::optional<std::string> type;  ///< the edge's `type`; absent for plain floor
  double multiplicator = 1;         ///< > 0; of the metres walked
  bool barrierFree = true;          ///< unless the source says otherwise
};

/// The one place that says what stairs, escalators, lifts, ramps and doors mean in a graph.
///
/// A user overrides rows by a JSON file that names the kinds:
///
///     {"stairs": {"multiplicator": 2.5, "barrierFree": false, "type": "stairs"}}
///
/// What a row leaves out keeps its standard value. Unknown kinds and members are errors.
class ConnectionTable {
 public:
  static ConnectionTable standard();

  /// The standard table with the rows of the file at `path` changed.
  /// @throws InputError that names the file, the member, what was found and what was expected
  static ConnectionTable withFile(const std::filesystem::path& path);

  const Connection& of(ConnectionKind kind) const;

 private:
  std::map<ConnectionKind, Connection> rows_;
};

}  // namespace KorvaniTools
