#include "Recorder/GraphFaults.hpp"

#include <cmath>
#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <sstream>
#include <utility>

#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::CLLocationCoordinate2D;
using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;

constexpr std::size_t kMostFaults = 20;
constexpr std::int64_t kFarthestLevel = 1000;

/// What a fault is found in. It becomes text only when there is one: graphs have many parts, and
/// faults are rare.
struct Place {
  const char* what = "";
  std::int64_t number = 0;
  const char* joint = nullptr;  ///< stands before a second number; absent: there is none
  std::int64_t second = 0;
  const char* detail = "";

  friend std::ostream& operator<<(std::ostream& stream, const Place& place) {
    stream << place.what << ' ' << place.number;
    if (place.joint != nullptr) stream << place.joint << place.second;
    return stream << place.detail;
  }
};

/// A text put together from anything that can be printed.
template <class... Parts>
std::string text(const Parts&... parts) {
  std::ostringstream stream;
  (stream << ... << parts);
  return std::move(stream).str();
}

/// Compared so that what is not a number is outside.
bool isOnEarth(CLLocationCoordinate2D coordinate) {
  return std::abs(coordinate.latitude) <= 90 && std::abs(coordinate.longitude) <= 180;
}

bool isLevel(std::int64_t level) { return level >= -kFarthestLevel && level <= kFarthestLevel; }

bool isPositive(double number) { return number > 0 && std::isfinite(number); }

bool isText(const std::string& bytes) {
  try {
    return !nlohmann::json(bytes).dump().empty();
  } catch (const nlohmann::json::type_error&) {
    return false;
  }
}

class Inspection {
 public:
  explicit Inspection(const KRVNavGraph& graph) : graph_(graph) {}

  std::vector<std::string> faults() {
    inspectRegions();
    inspectNodes();
    inspectFiling();
    inspectEdges();
    return std::move(faults_);
  }

 private:
  template <class... Parts>
  void complain(const Parts&... parts) {
    if (!enough()) faults_.push_back(text(parts...));
  }
  bool enough() const { return faults_.size() >= kMostFaults; }

  void inspectRegions() {
    std::int64_t number = 0;
    for (const auto& region : graph_.regions()) {
      const Place who{"region", ++number};
      if (!region) {
        complain(who, ": there is none, expected a region");
      } else if (!regions_.insert(region.get()).second) {
        complain(who, ": found a region that the graph lists already, expected another one");
      } else {
        inspect(*region, who);
      }
      if (enough()) return;
    }
  }

  void inspect(const KRVNavRegion& region, const Place& who) {
    if (region.graph().get() != &graph_) complain(who, ": it says it belongs to another graph");
    if (!isLevel(region.level())) complainAboutLevel(who, region.level());
    const auto southWest = region.southWestCoordinate();
    const auto northEast = region.northEastCoordinate();
    inspect(southWest,
            Place{.what = "region", .number = who.number, .detail = ", south-west corner"});
    inspect(northEast,
            Place{.what = "region", .number = who.number, .detail = ", north-east corner"});
    if (southWest.latitude > northEast.latitude || southWest.longitude > northEast.longitude) {
      complain(who, ": its north-east corner lies south or west of its south-west corner");
    }
    std::int64_t number = 0;
    for (const auto& obstacle : region.obstacles()) {
      inspect(obstacle, Place{"obstacle", ++number, " of region ", who.number});
    }
  }

  void inspect(const std::shared_ptr<KRVNavObstacle>& obstacle, const Place& who) {
    if (!obstacle) return complain(who, ": there is none, expected an obstacle");
    if (obstacle->coordinates().empty()) complain(who, ": no positions, expected at least one");
    for (const auto& coordinate : obstacle->coordinates()) inspect(coordinate, who);
  }

  void inspect(CLLocationCoordinate2D coordinate, const Place& who) {
    if (isOnEarth(coordinate)) return;
    complain(who, ": found latitude ", coordinate.latitude, " and longitude ", coordinate.longitude,
             ", expected -90 to 90 and -180 to 180");
  }

  void complainAboutLevel(const Place& who, std::int64_t level) {
    complain(who, ": found level ", level, ", expected ", -kFarthestLevel, " to ", kFarthestLevel);
  }

  void inspectNodes() {
    for (const auto& [number, node] : graph_.nodes()) {
      const Place who{"node", number};
      if (!node) {
        complain(who, ": there is none, expected a point");
      } else {
        inspect(*node, number, who);
      }
      if (enough()) return;
    }
  }

  void inspect(const KRVNavPoint& node, std::int64_t number, const Place& who) {
    if (number < 0) complain(who, ": found a negative number, expected one from 0 on");
    if (node.identifier() != number || node.identifierNumber() != number) {
      complain(who, ": its identifiers are ", node.identifier(), " and ", node.identifierNumber(),
               ", expected the number it is filed under");
    }
    if (!isLevel(node.level())) complainAboutLevel(who, node.level());
    inspect(node.coordinate(), who);
    if (isOnEarth(node.coordinate()) && node.location().coordinate() != node.coordinate()) {
      complain(who, ": its location is not at its coordinate");
    }
    inspectRegionOf(node, who);
  }

  void inspectRegionOf(const KRVNavPoint& node, const Place& who) {
    const auto region = node.region();
    if (!region || !regions_.contains(region.get())) {
      return complain(who, ": it lies in no region of the graph");
    }
    if (region->level() != node.level()) {
      complain(who, ": found level ", node.level(), ", expected ", region->level(),
               ", the one of its region");
    }
    filed_[region.get()].push_back(node.identifierNumber());
  }

  /// Whether each region lists the points that the graph knows, in the graph's order.
  void inspectFiling() {
    std::int64_t number = 0;
    for (const auto& region : graph_.regions()) {
      const Place who{"region", ++number};
      if (enough() || !region) return;
      for (const auto& [filedAs, node] : region->nodes()) {
        if (graph_.nodeWithIdentifier(filedAs) == node) continue;
        complain(who, ": the graph does not know its node ", filedAs);
      }
      if (region->nodes().keys() != filed_[region.get()]) {
        complain(who, ": its nodes are others than the graph's, or in another order");
      }
    }
  }

  void inspectEdges() {
    for (const auto& [from, row] : graph_.edges()) {
      for (const auto& [to, edge] : row) inspect(edge, from, to);
      if (enough()) return;
    }
  }

  void inspect(const std::shared_ptr<KRVNavEdge>& edge, std::int64_t from, std::int64_t to) {
    const Place who{"edge from", from, " to ", to};
    if (!edge) return complain(who, ": there is none, expected an edge");
    const auto start = graph_.nodeWithIdentifier(from);
    const auto end = graph_.nodeWithIdentifier(to);
    if (!start || !end) {
      return complain(who, ": there is no node ", start ? to : from, ", expected one");
    }
    if (edge->start() != start || edge->end() != end) {
      complain(who, ": its start and end are other points than these nodes");
    }
    inspectValues(*edge, start->distanceFrom(*end), who);
  }

  void inspectValues(const KRVNavEdge& edge, double ownDistance, const Place& who) {
    const bool taken = edge.distance() == ownDistance && std::isfinite(ownDistance);
    if (!isPositive(edge.distance()) && !taken) {
      complain(who, ": found distance ", edge.distance(), ", expected metres above 0");
    }
    if (!isPositive(edge.multiplicator())) {
      complain(who, ": found multiplicator ", edge.multiplicator(), ", expected one above 0");
    }
    if (edge.type() && !isText(*edge.type())) complain(who, ": its type is not UTF-8 text");
  }

  const KRVNavGraph& graph_;
  std::set<const KRVNavRegion*> regions_;
  std::map<const KRVNavRegion*, std::vector<std::int64_t>> filed_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> graphFaults(const KRVNavGraph& graph) {
  return Inspection(graph).faults();
}

}  // namespace KorvaniRecorder
