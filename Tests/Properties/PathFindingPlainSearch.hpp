#pragma once

/// The wave search written down in the plainest way: every path a list of its own, every look-up a
/// walk over a list. The engine's finder must agree with it point by point and bit by bit.

#include <memory>
#include <vector>

#include "PathFindingCase.hpp"

namespace KorvaniTest {

class PlainSearch {
 public:
  struct Path {
    Points nodes;
    double distance = 0;
  };

  Points find(const Points& starts, const std::vector<double>& distances,
              const Points& destinations, bool lookForBarrierFreeRoute);

  /// The best way to that point object so far; null when it was not reached.
  std::shared_ptr<const Path> pathTo(const KorvaniNavigation::KRVNavPoint& point) const;

  std::shared_ptr<const Path> bestPath() const { return bestPath_; }

  std::size_t waves() const { return waves_; }

 private:
  void store(std::shared_ptr<const Path> path);
  void wave(const Points& destinations, bool lookForBarrierFreeRoute);

  std::vector<std::shared_ptr<const Path>> pathStore_;
  Points nodesToCheck_;
  std::shared_ptr<const Path> bestPath_;
  std::size_t waves_ = 0;
};

}  // namespace KorvaniTest
