#include "Recorder/BuildingWriter.hpp"

#include <map>
#include <utility>

#include "Json/EngineJson.hpp"
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
using KorvaniTools::OrderedJson;

OrderedJson position(double longitude, double latitude) {
  return OrderedJson::array({longitude, latitude});
}

OrderedJson position(CLLocationCoordinate2D coordinate) {
  return position(coordinate.longitude, coordinate.latitude);
}

/// The rectangle of a region, counterclockwise as GeoJSON wants it.
OrderedJson ringOf(const KRVNavRegion& region) {
  const auto low = region.southWestCoordinate();
  const auto high = region.northEastCoordinate();
  return OrderedJson::array(
      {position(low.longitude, low.latitude), position(high.longitude, low.latitude),
       position(high.longitude, high.latitude), position(low.longitude, high.latitude),
       position(low.longitude, low.latitude)});
}

class Writer {
 public:
  explicit Writer(const KRVNavGraph& graph) : graph_(graph) {}

  BuildingText write() {
    written_.text = R"({"type":"FeatureCollection","formatVersion":1,"features":[)";
    for (const auto& region : graph_.regions()) addRegion(*region);
    for (const auto& entry : graph_.nodes()) addNode(*entry.second);
    for (const auto& [from, row] : graph_.edges()) {
      for (const auto& [to, edge] : row) addEdge(*edge, from, to);
    }
    for (const auto& region : graph_.regions()) {
      for (const auto& obstacle : region->obstacles()) addObstacle(*obstacle, *region);
    }
    written_.text += "\n]}\n";
    return std::move(written_);
  }

 private:
  void add(OrderedJson properties, const char* type, OrderedJson coordinates) {
    const OrderedJson feature{
        {"type", "Feature"},
        {"properties", std::move(properties)},
        {"geometry", {{"type", type}, {"coordinates", std::move(coordinates)}}}};
    written_.text += separator_;
    written_.text += KorvaniTools::jsonText(feature);
    separator_ = ",\n";
  }

  void addRegion(const KRVNavRegion& region) {
    auto& name = names_[&region];
    name = "region " + std::to_string(names_.size());
    add({{"kind", "region"}, {"level", region.level()}, {"name", name}}, "Polygon",
        OrderedJson::array({ringOf(region)}));
  }

  void addNode(const KRVNavPoint& node) {
    add({{"kind", "node"},
         {"id", node.identifierNumber()},
         {"level", node.level()},
         {"region", names_.at(node.region().get())}},
        "Point", position(node.coordinate()));
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
    add(std::move(properties), "LineString",
        OrderedJson::array(
            {position(edge.start()->coordinate()), position(edge.end()->coordinate())}));
  }

  void addObstacle(const KRVNavObstacle& obstacle, const KRVNavRegion& region) {
    OrderedJson properties{{"kind", "obstacle"}, {"level", region.level()}};
    if (obstacle.strength() != 0) properties["strength"] = obstacle.strength();
    properties["region"] = names_.at(&region);
    OrderedJson line = OrderedJson::array();
    for (const auto& coordinate : obstacle.coordinates()) line.push_back(position(coordinate));
    add(std::move(properties), "LineString", std::move(line));
  }

  const KRVNavGraph& graph_;
  std::map<const KRVNavRegion*, std::string> names_;
  const char* separator_ = "\n";
  BuildingText written_;
};

}  // namespace

BuildingText buildingText(const KRVNavGraph& graph) { return Writer(graph).write(); }

}  // namespace KorvaniRecorder
