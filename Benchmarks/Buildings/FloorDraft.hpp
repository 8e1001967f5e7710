#pragma once

#include <cstdint>
#include <vector>

#include "Buildings/PlainBuilding.hpp"
#include "Buildings/SeededNumbers.hpp"
#include "Buildings/Site.hpp"

namespace KorvaniBenchmarks {

/// Draws into one level of a building, in metres.
class FloorDraft {
 public:
  FloorDraft(PlainBuilding& building, std::int64_t level, SeededNumbers& numbers)
      : building_(building), level_(level), numbers_(numbers) {}

  SeededNumbers& numbers() { return numbers_; }

  std::uint32_t addNode(Metres place);
  Metres placeOf(std::uint32_t node) const { return places_[node - firstNode_]; }

  /// A way in both directions, up to a fiftieth longer than the straight line.
  void join(std::uint32_t a, std::uint32_t b) { join(a, b, 1.0, true); }
  void join(std::uint32_t a, std::uint32_t b, double multiplicator, bool barrierFree);
  /// A way in one direction only.
  void joinOneWay(std::uint32_t from, std::uint32_t to);

  void addWall(const std::vector<Metres>& line);

  /// Notes the rectangle of the level, of which these are two opposite corners in metres.
  void finish(Metres southWest, Metres northEast);

 private:
  double lengthBetween(std::uint32_t a, std::uint32_t b);

  PlainBuilding& building_;
  std::int64_t level_;
  SeededNumbers& numbers_;
  Site site_ = Site::turned();
  std::uint32_t firstNode_ = static_cast<std::uint32_t>(building_.nodes.size());
  std::vector<Metres> places_;
};

}  // namespace KorvaniBenchmarks
