#pragma once

/// A small building with a wall, and walks in it:
///
///      1 ---------- 2 ---------- 3        level 0, 10 m from one node to the next
///                   |
///              =====|=====                a wall of strength 20 with a gap at the edge
///                   |
///                   4 ---------- 5        stairs lead from 5 up to 6
///                                6 -- 7   level 1
///
/// "Door" is at 1, "Desk" at 3 and "Archive" at 7.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "Drawing/Viewer/Timeline.hpp"
#include "Support/FacadeFixture.hpp"
#include "Tools/BuildingText.hpp"
#include "Tools/Replaying.hpp"

namespace KorvaniTest {

/// About a metre to the north, and to the east.
inline constexpr double kNorth = 0.000009;
inline constexpr double kEast = 0.000009137;

/// Metres east and south of node 1, as longitude and latitude.
inline double longitudeAt(double east) { return 20 + east * kEast; }
inline double latitudeAt(double south) { return 10 - south * kNorth; }

inline std::string viewerNode(int id, int level, double east, double south) {
  return nodeAt(id, level, longitudeAt(east), latitudeAt(south));
}

inline std::string viewerPlace(const std::string& name, int level, double east, double south) {
  return placeAt(name, level, longitudeAt(east), latitudeAt(south));
}

inline std::string wallBetween(double west, double east, double south) {
  return wallOf(0,
                "[" + positionOf(longitudeAt(west), latitudeAt(south)) + ',' +
                    positionOf(longitudeAt(east), latitudeAt(south)) + "]",
                "\"strength\":20");
}

inline KorvaniTools::Building viewerBuilding(const std::string& desk = "Desk") {
  return parsed({viewerNode(1, 0, 0, 0), viewerNode(2, 0, 10, 0), viewerNode(3, 0, 20, 0),
                 viewerNode(4, 0, 10, 10), viewerNode(5, 0, 20, 10), viewerNode(6, 1, 20, 10),
                 viewerNode(7, 1, 30, 10), edgeOf(1, 2), edgeOf(2, 3), edgeOf(2, 4), edgeOf(4, 5),
                 edgeOf(5, 6, R"("type":"stairs")"), edgeOf(6, 7), wallBetween(0, 9, 5),
                 wallBetween(11, 20, 5), viewerPlace("Door", 0, 0, 0), viewerPlace(desk, 0, 20, 0),
                 viewerPlace("Archive", 1, 30, 10)},
                R"("name":"House","attribution":"us")");
}

inline std::string pointAt(double east, double south, int level = 0) {
  return tracePoint(latitudeAt(south), longitudeAt(east), level);
}

inline std::string routeTo(double east, double south, int level = 0) {
  return R"({"op":"route","from":)" + pointAt(0, 0) + R"(,"to":[)" + pointAt(east, south, level) +
         "]}\n";
}

inline std::string lineAt(const std::string& operation, double east, double south, int level = 0,
                          const std::string& more = "") {
  return R"({"op":")" + operation + R"(","at":)" + pointAt(east, south, level) + more + "}\n";
}

class ViewerFixture : public FacadeFixture {
 protected:
  KorvaniTools::Timeline timeline(const std::string& trace) const {
    std::istringstream lines(trace);
    return KorvaniTools::makeTimeline(viewerBuilding(), lines, "test.trace.ndjson");
  }
};

}  // namespace KorvaniTest
