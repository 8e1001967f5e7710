#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Building/BuildingFigures.hpp"
#include "Building/BuildingReader.hpp"
#include "Support/LevelNames.hpp"
#include "Support/PlainText.hpp"
#include "Support/Text.hpp"
#include "korvani-nav/Commands.hpp"
#include "korvani-nav/Output.hpp"
#include "korvani-nav/Terminal.hpp"

namespace KorvaniTools {
namespace {

using Row = std::vector<std::string>;

std::string padding(std::size_t wanted, const std::string& text) {
  return std::string(wanted - std::min(wanted, width(text)), ' ');
}

/// Rows in columns; the first two columns to the left, numbers to the right.
std::string table(const std::vector<Row>& rows, const Style& style) {
  std::vector<std::size_t> widths(rows.front().size(), 0);
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));
  }
  std::string text;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    std::string line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const std::string space = padding(widths[i], rows[r][i]);
      line += (i == 0 ? "  " : "   ") + (i == 1 ? rows[r][i] + space : space + rows[r][i]);
    }
    text += (r == 0 ? style.faint(line) : line) + '\n';
  }
  return text;
}

std::string levelTable(const BuildingFigures& figures, const LevelNames& names,
                       const Style& style) {
  std::vector<Row> rows{{"level", "name", "regions", "nodes", "edges", "to other levels",
                         "obstacles", "places", "rooms"}};
  for (const auto& [level, of] : figures.levels) {
    rows.push_back({std::to_string(level), plainLine(names.name(level)), std::to_string(of.regions),
                    std::to_string(of.nodes), std::to_string(of.edges),
                    std::to_string(of.connections), std::to_string(of.obstacles),
                    std::to_string(of.places), std::to_string(of.rooms)});
  }
  return rows.size() == 1 ? "" : '\n' + table(rows, style);
}

std::string fact(const std::string& name, const std::string& value, const Style& style) {
  return "  " + style.faint(name + padding(13, name)) + plainLine(value) + '\n';
}

std::string edgesText(const Building& building, const BuildingFigures& figures) {
  std::string text = std::to_string(building.edges.size()) + " (" + std::to_string(figures.oneway) +
                     " one-way, " + std::to_string(figures.barrierFree) + " barrier-free)";
  const char* separator = "; ";
  for (const auto& [type, count] : figures.edgeTypes) {
    text += separator + std::to_string(count) + " of type " + type;
    separator = ", ";
  }
  return text;
}

std::string componentsText(const ComponentFigures& components) {
  if (components.count == 0) return "nothing";
  if (components.count == 1) return "all " + counted(components.largest, "node", "nodes");
  return counted(components.count, "part", "parts") + ", the largest with " +
         counted(components.largest, "node", "nodes");
}

std::string placesText(const Building& building, const BuildingFigures& figures) {
  std::string text = std::to_string(building.places.size());
  if (figures.entrances > 0) {
    text += " (" + counted(figures.entrances, "entrance", "entrances") + ")";
  }
  return text;
}

std::string summaryText(const ReadSummary& summary, const Style& style) {
  if (summary.empty()) return "";
  std::string text = "\n";
  for (const auto& [kind, count] : summary.ignoredKinds) {
    text +=
        fact("ignored", counted(count, "feature", "features") + " of unknown kind " + kind, style);
  }
  for (const auto& [property, count] : summary.ignoredProperties) {
    text += fact("ignored",
                 "unknown property " + property.second + " of " +
                     counted(count, property.first, property.first + "s"),
                 style);
  }
  if (summary.droppedObstacleLines > 0) {
    text += fact("dropped",
                 counted(summary.droppedObstacleLines, "obstacle line", "obstacle lines") +
                     " outside every region of the level",
                 style);
  }
  for (const std::int64_t level : summary.madeRegions) {
    text += fact("made", "a region for level " + std::to_string(level), style);
  }
  return text;
}

std::string infoText(const std::string& file, const Building& building, const Style& style) {
  const BuildingFigures figures = figuresOf(building);
  std::string text = style.heading(plainLine(building.name.value_or(file))) + "\n\n";
  text += fact("levels", std::to_string(figures.levels.size()), style);
  text += fact("regions", std::to_string(building.regions.size()), style);
  text += fact("nodes", std::to_string(building.nodes.size()), style);
  text += fact("edges", edgesText(building, figures), style);
  text += fact("obstacles", std::to_string(figures.obstacles), style);
  text += fact("places", placesText(building, figures), style);
  text += fact("rooms", std::to_string(building.rooms.size()), style);
  text += fact("connected", componentsText(figures.components), style);
  text += fact("step-free", componentsText(figures.stepFree), style);
  text += fact("attribution", building.attribution.value_or("none given"), style);
  text += fact("licence", building.licence.value_or("none given"), style);
  text += levelTable(figures, LevelNames(building), style);
  return text + summaryText(building.summary, style);
}

}  // namespace

int runInfo(const std::string& file) {
  const Building building = readBuilding(file);
  writeOutput(infoText(file, building, Style::forStandardOutput()), "");
  return kExitOk;
}

}  // namespace KorvaniTools
