#include "Drawing/Viewer/LevelHome.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace KorvaniTools {
namespace {

/// With fewer places, one of them says as little as all.
constexpr std::size_t kFewestPlaces = 5;

struct Box {
  ScenePoint first;
  ScenePoint last;

  void include(ScenePoint point) {
    first = {std::min(first.x, point.x), std::min(first.y, point.y)};
    last = {std::max(last.x, point.x), std::max(last.y, point.y)};
  }
  ScenePoint middle() const { return {(first.x + last.x) / 2, (first.y + last.y) / 2}; }
};

std::vector<Box> contentsOf(const SceneLevel& level) {
  std::vector<Box> boxes;
  for (const SceneRoom& room : level.rooms) {
    const SceneLine& outline = room.rings.front();
    Box box{outline.front(), outline.front()};
    for (const ScenePoint& point : outline) box.include(point);
    boxes.push_back(box);
  }
  if (!boxes.empty() || level.places.size() < kFewestPlaces) return boxes;
  for (const ScenePlace& place : level.places) boxes.push_back({place.at, place.at});
  return boxes;
}

double medianOf(std::vector<double> numbers) {
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

ScenePoint medianOf(const std::vector<Box>& boxes) {
  std::vector<double> across;
  std::vector<double> down;
  for (const Box& box : boxes) {
    across.push_back(box.middle().x);
    down.push_back(box.middle().y);
  }
  return {medianOf(std::move(across)), medianOf(std::move(down))};
}

}  // namespace

std::optional<SceneWindow> homeOf(const SceneLevel& level) {
  std::vector<Box> boxes = contentsOf(level);
  if (boxes.empty()) return {};
  const ScenePoint median = medianOf(boxes);
  const auto apart = [&](const Box& box) {
    return std::hypot(box.middle().x - median.x, box.middle().y - median.y);
  };
  std::stable_sort(boxes.begin(), boxes.end(),
                   [&](const Box& a, const Box& b) { return apart(a) < apart(b); });
  boxes.resize((4 * boxes.size() + 4) / 5);
  Box home = boxes.front();
  for (const Box& box : boxes) {
    home.include(box.first);
    home.include(box.last);
  }
  return SceneWindow{home.first.x, home.first.y, home.last.x - home.first.x,
                     home.last.y - home.first.y};
}

}  // namespace KorvaniTools
