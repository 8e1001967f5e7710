#pragma once

/// Internal. From an extract's tags to a floor plan.

#include <cstdint>
#include <vector>

#include "FloorPlan/FloorPlan.hpp"
#include "Import/Osm/OsmData.hpp"
#include "Import/Osm/OsmLevels.hpp"
#include "Import/Osm/OsmPlatforms.hpp"

namespace KorvaniTools {

class OsmPlan {
 public:
  /// Adds remarks to `extract`, which must outlive this.
  explicit OsmPlan(OsmExtract& extract);

  /// The floor plan, without name, licence and remarks. To be called once.
  FloorPlan make();

 private:
  void addWay(const OsmWay& way);
  void addLine(const OsmWay& way);
  void addCell(const std::string& source, const OsmTags& tags,
               std::vector<std::vector<std::vector<Coordinate>>> polygons,
               std::vector<std::int64_t> nodes);
  void addArea(const OsmArea& area);
  void addWall(const std::string& source, const OsmTags& tags, std::vector<Coordinate> positions);
  void addDoorLine(const OsmWay& way);
  void addLevelOutline(const std::string& source, const OsmTags& tags);
  void addSite(const OsmWay& way);
  void addNode(const OsmNode& node);
  void addLift(const OsmNode& node);
  void addDoor(const OsmNode& node);
  void addPlace(const OsmNode& node, std::string name, bool entrance);
  void addPassing();
  void findStairs();

  OsmExtract& extract_;
  OsmLevels levels_;
  FloorPlan plan_;
  std::vector<std::vector<std::int64_t>> cellNodes_;  ///< of each cell, the nodes of its outline
  std::vector<PlanShaft> lifts_;                      ///< that are nodes
  std::vector<PlanLine> passing_;                     ///< over or under things, on no known level
  std::vector<PlatformLine> platforms_;               ///< that are drawn as lines
  std::vector<std::size_t> steps_;                    ///< lines that are drawn as steps
  std::vector<bool> closedCells_;                     ///< of each cell, whether people are kept out
};

}  // namespace KorvaniTools
