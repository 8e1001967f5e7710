#include "Building/FeatureText.hpp"

#include <utility>

namespace KorvaniTools {
namespace {

using OrderedJson = nlohmann::ordered_json;

std::string textOf(const OrderedJson& json) {
  constexpr int kOneLine = -1;
  return json.dump(kOneLine, ' ', false, OrderedJson::error_handler_t::replace);
}

}  // namespace

FeatureText::FeatureText(const OrderedJson& members) : text_(R"({"type":"FeatureCollection",)") {
  for (const auto& [key, value] : members.items()) {
    text_ += textOf(key) + ':' + textOf(value) + ',';
  }
  text_ += R"("features":[)";
}

void FeatureText::add(OrderedJson properties, const char* type, OrderedJson coordinates) {
  text_ += separator_;
  text_ += textOf({{"type", "Feature"},
                   {"properties", std::move(properties)},
                   {"geometry", {{"type", type}, {"coordinates", std::move(coordinates)}}}});
  separator_ = ",\n";
}

std::string FeatureText::finished() && {
  text_ += "\n]}\n";
  return std::move(text_);
}

OrderedJson positionJson(Coordinate coordinate) {
  return OrderedJson::array({coordinate.longitude, coordinate.latitude});
}

OrderedJson positionsJson(const std::vector<Coordinate>& coordinates) {
  OrderedJson positions = OrderedJson::array();
  for (const Coordinate& coordinate : coordinates) positions.push_back(positionJson(coordinate));
  return positions;
}

OrderedJson ringsJson(const Rectangle& rectangle) {
  const Coordinate& low = rectangle.southWest;
  const Coordinate& high = rectangle.northEast;
  return OrderedJson::array({positionsJson({low, Coordinate{low.latitude, high.longitude}, high,
                                            Coordinate{high.latitude, low.longitude}, low})});
}

}  // namespace KorvaniTools
