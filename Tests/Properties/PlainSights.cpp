#include "PlainSights.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "Navigation/Localisation/NodeTree.hpp"

namespace KorvaniTest {

using KorvaniNavigation::WallEdge;
using KorvaniPlatform::CLLocationCoordinate2D;
using KorvaniPlatform::MKMapPoint;
using KorvaniPlatform::MKMapPointForCoordinate;

namespace {

bool isNearer(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

}  // namespace

PlainSights::PlainSights(std::vector<CLLocationCoordinate2D> nodes, std::vector<WallEdge> walls)
    : nodes_(std::move(nodes)), walls_(std::move(walls)) {
  for (const auto node : nodes_) points_.push_back(MKMapPointForCoordinate(node));
}

bool PlainSights::isHidden(MKMapPoint from, MKMapPoint to) const {
  return std::any_of(walls_.begin(), walls_.end(), [&](const WallEdge& wall) {
    return KorvaniNavigation::segmentsMeet(from, to, wall.from, wall.to);
  });
}

std::vector<std::uint32_t> PlainSights::from(CLLocationCoordinate2D position) const {
  std::vector<std::pair<double, std::uint32_t>> order;
  for (const auto node : nodes_) {
    const auto index = static_cast<std::uint32_t>(order.size());
    order.emplace_back(KorvaniNavigation::degreeDistance(position, node), index);
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const auto& a, const auto& b) { return isNearer(a.first, b.first); });
  constexpr double kNone = std::numeric_limits<double>::max();
  double best = kNone;
  std::vector<std::uint32_t> visible;
  const MKMapPoint here = MKMapPointForCoordinate(position);
  for (const auto& [distance, index] : order) {
    if (best != kNone && distance > 2.5 * best) continue;
    if (isHidden(here, points_[index])) continue;
    best = std::min(best, distance);
    visible.push_back(index);
  }
  return visible;
}

}  // namespace KorvaniTest
