#include "Recorder/BuildingWriter.hpp"

#include <map>
#include <utility>

#include "Building/FeatureText.hpp"
#include "Navigation/Graph/KRVNavEdge.hpp"
#include "Navigation/Graph/KRVNavObstacle.hpp"
#include "Navigation/Graph/KRVNavPoint.hpp"
#include "Navigation/Graph/KRVNavRegion.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::KRVNavEdge;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::KRVNavObstacle;
using KorvaniNavigation::KRVNavPoint;
using KorvaniNavigation::KRVNavRegion;
using KorvaniTools::FeatureText;
using KorvaniTools::positionJson;
using KorvaniTools::positionsJson;

using OrderedJson = FeatureText::OrderedJson;

/// The ring of a region's rectangle.
OrderedJson ringsOf(const KRVNavRegion& region) {
  return KorvaniTools::ringsJson(
      KorvaniTools::Rectangle{region.southWestCoordinate(), region.northEastCoordinate()});
}

class Writer {
 public:
  explicit Writer(const KRVNavGraph& graph) : graph_(graph) {}

  BuildingText write() {
    for (const auto& region : graph_.regions()) addRegion(*region);
    for (const auto& entry : graph_.nodes()) addNode(*entry.second);
    for (const auto& [from, row] : graph_.edges()) {
      for (const auto& [to, edge] : row) addEdge(*edge, from, to);
    }
    for (const auto& region : graph_.regions()) {
      for (const auto& obstacle : region->obstacles()) addObstacle(*obstacle, *region);
    }
    written_.text = std::move(text_).finished();
    return std::move(written_);
  }

 private:
  void addRegion(const KRVNavRegion& region) {
    auto& name = names_[&region];
    name = "region " + std::to_string(names_.size());
    text_.add({{"kind", "region"}, {"level", region.level()}, {"name", name}}, "Polygon",
              ringsOf(region));
  }

  void addNode(const KRVNavPoint& node) {
    text_.add({{"kind", "node"},
               {"id", node.identifierNumber()},
               {"level", node.level()},
               {"region", names_.at(node.region().get())}},
              "Point", positionJson(node.coordinate()));
  }

  void addEdge(const KRVNavEdge& edge, std::int64_t from, std::int64_t to) {
    OrderedJson properties{{"kind", "edge"}, {"from", from}, {"to", to}, {"oneway", true}};
    if (edge.distance() > 0) {
      properties["distance"] = edge.distance();
    } else {
      ++written_.edgesWithoutDistance;
    }
    if (edge.multiplicator() != 1) properties["multiplicator"] = edge.multiplicator();
    if (!edge.isBarrierFree()) properties["barrierFree"] = false;
    if (const auto type = edge.type()) properties["type"] = *type;
    text_.add(std::move(properties), "LineString",
              positionsJson({edge.start()->coordinate(), edge.end()->coordinate()}));
  }

  void addObstacle(const KRVNavObstacle& obstacle, const KRVNavRegion& region) {
    OrderedJson properties{{"kind", "obstacle"}, {"level", region.level()}};
    if (obstacle.strength() != 0) properties["strength"] = obstacle.strength();
    properties["region"] = names_.at(&region);
    text_.add(std::move(properties), "LineString", positionsJson(obstacle.coordinates()));
  }

  const KRVNavGraph& graph_;
  std::map<const KRVNavRegion*, std::string> names_;
  FeatureText text_{OrderedJson{{"formatVersion", 1}}};
  BuildingText written_;
};

}  // namespace

BuildingText buildingText(const KRVNavGraph& graph) { return Writer(graph).write(); }

}  // namespace KorvaniRecorder
