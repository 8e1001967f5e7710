#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Json/EngineJson.hpp"
#include "Lint/Lint.hpp"
#include "Lint/LintJson.hpp"
#include "Support/InputError.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlainText.hpp"
#include "Support/Text.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"
#include "korvani-nav/Terminal.hpp"

namespace KorvaniTools {
namespace {

using Findings = std::vector<LintFinding>;

std::string padded(const std::string& text, std::size_t columns) {
  return text + std::string(columns - std::min(columns, width(text)), ' ');
}

/// The severity as a word in a column of its own.
std::string severityWord(LintSeverity severity, const Style& style) {
  constexpr std::size_t kColumns = 7;
  const std::string word = padded(severityName(severity), kColumns);
  return severity == LintSeverity::note ? style.faint(word) : style.warning(word);
}

std::string findingText(const LintFinding& finding, const Style& style) {
  std::string origin = finding.rule;
  if (!finding.at.empty()) {
    const Coordinate at = finding.at.front();
    origin += " at " + decimals(at.latitude) + ',' + decimals(at.longitude);
    if (finding.at.size() > 1) {
      origin += " and " + counted(finding.at.size() - 1, "more spot", "more spots");
    }
  }
  return "  " + severityWord(finding.severity, style) + "  " + plainLine(finding.message) +
         "\n           " + style.faint(origin) + '\n';
}

std::string levelHeading(const LintFinding& finding, const LevelNames& levels) {
  if (finding.levels.empty()) return "building";
  const std::int64_t level = finding.levels.front();
  // Messages count levels as the file does.
  const bool renumbered = levels.number(level) != std::to_string(level);
  return plainLine(levels.words(level)) +
         (renumbered ? " (" + std::to_string(level) + " in the file)" : "");
}

std::string summaryText(const Findings& findings) {
  if (findings.empty()) return "nothing to mend";
  const LintCounts counts = countFindings(findings);
  return counted(counts.errors, "error", "errors") + ", " +
         counted(counts.warnings, "warning", "warnings") + ", " +
         counted(counts.notes, "note", "notes");
}

std::string lintText(const Findings& findings, const Building& building, const std::string& file,
                     const Style& style) {
  const LevelNames levels(building);
  std::string text = style.heading(plainLine(building.name.value_or(file))) + '\n';
  std::string heading;
  for (const LintFinding& finding : findings) {
    const std::string level = levelHeading(finding, levels);
    if (level != heading) text += '\n' + style.heading(level) + '\n';
    heading = level;
    text += findingText(finding, style);
  }
  text += '\n' + summaryText(findings) + '\n';
  if (building.attribution)
    text += style.faint("map data: " + plainLine(*building.attribution)) + '\n';
  return text;
}

std::string written(const Findings& findings, const Building& building,
                    const LintCommandOptions& options) {
  if (options.format == "json") return jsonText(lintJson(findings, building)) + '\n';
  if (options.format == "geojson") return jsonText(lintGeoJson(findings, building)) + '\n';
  const bool toTerminal = options.output.empty() || options.output == "-";
  return lintText(findings, building, options.file,
                  toTerminal ? Style::forStandardOutput() : Style());
}

std::string rulesText() {
  const auto& rules = lintRules();
  std::size_t columns = 0;
  for (const LintRule& rule : rules) columns = std::max(columns, rule.name.size());
  const Style style = Style::forStandardOutput();
  std::string text;
  for (const LintRule& rule : rules) {
    text += padded(rule.name, columns) + "  " + severityWord(rule.severity, style) + "  " +
            rule.finds + '\n';
  }
  return text;
}

}  // namespace

int runLint(const LintCommandOptions& options) {
  if (options.listRules) {
    writeOutput(rulesText(), options.output);
    return kExitOk;
  }
  if (options.file.empty()) throw InputError("lint needs a building file, or --list-rules");
  LintOptions rules;
  rules.only = {options.rules.begin(), options.rules.end()};
  rules.skip = {options.skip.begin(), options.skip.end()};
  const Building building = readBuilding(options.file);
  const Findings findings = lintBuilding(building, rules);
  writeOutput(written(findings, building, options), options.output);
  const LintCounts counts = countFindings(findings);
  const bool fails = counts.errors > 0 || (options.strict && counts.warnings > 0);
  return fails ? kExitFindings : kExitOk;
}

}  // namespace KorvaniTools
