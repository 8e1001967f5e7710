#include "Support/TextBuilding.hpp"

#include <stdexcept>

namespace KorvaniTest {

TextBuilding::TextBuilding(double metresPerCell) : metresPerCell_(metresPerCell) {}

TextBuilding::TextBuilding(std::string_view drawing, double metresPerCell)
    : TextBuilding(metresPerCell) {
  addLevel(0, drawing);
}

TextBuilding& TextBuilding::addLevel(std::int64_t level, std::string_view drawing) {
  if (regions_.count(level) != 0) {
    throw std::invalid_argument("level " + std::to_string(level) + " is drawn twice");
  }
  const TextDrawing read(drawing);
  const auto region = std::make_shared<KRVNavRegion>(level);
  regions_[level] = region;
  graph_->add(region);
  setRectangle(*region, read);
  addNodes(*region, read);
  addWalls(*region, read);
  for (const TextDrawing::Line& line : read.lines()) {
    connect(std::string(1, line.first), std::string(1, line.second));
  }
  return *this;
}

TextBuilding& TextBuilding::connect(const std::string& from, const std::string& to,
                                    const Connection& connection) {
  addEdge(point(from), point(to), connection);
  if (!connection.oneWay) addEdge(point(to), point(from), connection);
  return *this;
}

const std::shared_ptr<KRVNavRegion>& TextBuilding::region(std::int64_t level) const {
  const auto found = regions_.find(level);
  if (found == regions_.end()) {
    throw std::invalid_argument("level " + std::to_string(level) + " is not drawn");
  }
  return found->second;
}

const PointPtr& TextBuilding::point(const std::string& name) const {
  const auto found = points_.find(name);
  if (found == points_.end()) throw std::invalid_argument("no node " + name + " is drawn");
  return found->second;
}

std::shared_ptr<KRVNavEdge> TextBuilding::edge(const std::string& from,
                                               const std::string& to) const {
  return graph_->edgeFromNode(*point(from), *point(to));
}

std::string TextBuilding::names(const std::vector<PointPtr>& points) const {
  std::string result;
  for (const PointPtr& wanted : points) {
    std::string name = "?";
    for (const auto& entry : points_) {
      if (entry.second == wanted) name = entry.first;
    }
    result += name;
  }
  return result;
}

CLLocationCoordinate2D TextBuilding::coordinate(std::int64_t level, double column,
                                                double row) const {
  static_cast<void>(region(level));
  return coordinate({column, row});
}

PointPtr TextBuilding::position(std::int64_t level, double column, double row) const {
  return at(coordinate(level, column, row), level);
}

CLLocationCoordinate2D TextBuilding::coordinate(TextDrawing::Cell cell) const {
  return fromOrigin(-cell.row * metresPerCell_, cell.column * metresPerCell_);
}

void TextBuilding::setRectangle(KRVNavRegion& region, const TextDrawing& drawing) const {
  const double east = static_cast<double>(drawing.columns()) - 0.5;
  const double south = static_cast<double>(drawing.rows()) - 0.5;
  region.setNorthEastCoordinate(coordinate({east, -0.5}));
  region.setSouthWestCoordinate(coordinate({-0.5, south}));
}

void TextBuilding::addNodes(KRVNavRegion& region, const TextDrawing& drawing) {
  for (const TextDrawing::Node& node : drawing.nodes()) {
    const auto identifier = static_cast<std::int64_t>(points_.size()) + 1;
    const PointPtr point = at(coordinate(node.cell), region.level(), identifier);
    if (!points_.emplace(std::string(1, node.name), point).second) {
      throw std::invalid_argument(std::string("node ") + node.name + " is drawn twice");
    }
    region.addNode(point);
  }
}

void TextBuilding::addWalls(KRVNavRegion& region, const TextDrawing& drawing) const {
  for (const TextDrawing::Wall& wall : drawing.walls()) {
    const std::vector<CLLocationCoordinate2D> corners{coordinate(wall.first),
                                                      coordinate(wall.second)};
    region.addObstacle(std::make_shared<KRVNavObstacle>(corners));
  }
}

void TextBuilding::addEdge(const PointPtr& from, const PointPtr& to, const Connection& connection) {
  const double distance = connection.distance ? *connection.distance : from->distanceFrom(*to);
  const auto edge = std::make_shared<KRVNavEdge>(from, to, distance, connection.multiplicator,
                                                 connection.isBarrierFree, connection.type);
  graph_->addEdge(edge, *from, *to);
}

}  // namespace KorvaniTest
