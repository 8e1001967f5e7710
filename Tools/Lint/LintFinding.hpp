#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// How grave a finding is, from the least on.
enum class LintSeverity {
  note,     ///< worth a look; routes are as they should be
  warning,  ///< some routes or instructions are worse than they could be
  error,    ///< people are sent astray, or cannot be guided at all
};

/// "note", "warning" or "error".
const char* severityName(LintSeverity severity);

/// An edge by the ids of its nodes, in the order of the file.
struct LintEdge {
  std::int64_t from = 0;
  std::int64_t to = 0;

  friend bool operator==(const LintEdge&, const LintEdge&) = default;
};

/// One thing in a building that somebody has to mend or look at.
struct LintFinding {
  std::string rule;  ///< the name of the rule that found it, e.g. "edge-through-wall"
  LintSeverity severity = LintSeverity::error;
  std::vector<std::int64_t> levels;  ///< ascending; empty when it is about the whole building
  /// One sentence: what is wrong, and what to mend.
  std::string message;

  /// The spots to look at, the first of them first; empty only for what lies nowhere.
  std::vector<Coordinate> at;
  /// What to draw: lines, or else a rectangle, or else the spots themselves.
  std::vector<std::vector<Coordinate>> lines;
  std::optional<Rectangle> area;

  std::vector<std::int64_t> nodes;    ///< ids of the nodes concerned
  std::vector<LintEdge> edges;        ///< the edges concerned
  std::vector<std::size_t> features;  ///< indexes into the file's `features`, from 0
  std::vector<std::string> names;     ///< names of the places or regions concerned
  /// What the places were made of, as an importer wrote it down ("way/12"): to be mended in the map
  /// that was imported.
  std::vector<std::string> sources;
};

}  // namespace KorvaniTools
