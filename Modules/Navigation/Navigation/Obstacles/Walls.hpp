#pragma once

// Internal. The obstacles of a list as a grid of edges, once it pays to have one.
//
// A detector that is asked once or twice, as for one jump of a position, is answered sooner by
// looking at every edge than by sorting them first. So the first questions about a list get no
// grid, and the one after them has it made. Copies of a list share it, and so do all detectors over
// them.
//
// Thread safety: any thread at any time; who comes while the grid is made waits for it.

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "Common/CountedArray.hpp"
#include "Navigation/Graph/GraphAccess.hpp"
#include "Navigation/Obstacles/WallGrid.hpp"

namespace KorvaniNavigation {

class KRVNavObstacle;

class Walls {
 public:
  using Obstacles = KorvaniCommon::CountedArray<std::shared_ptr<KRVNavObstacle>>;

  // What is shared by all who ask about that list, as the obstacles are now.
  static std::shared_ptr<const Walls> of(const Obstacles& obstacles);

  explicit Walls(RevisionStamp stamp);

  // Whether no obstacle has changed since.
  bool isCurrent() const { return stamp_ == obstacles_.stamp(); }

  // The grid of the list's edges; obstacles are known by their place in the list. Null when they
  // are to be looked at one by one: for the first questions, and for a list that holds something
  // that cannot be tested, which is for whoever comes to it to complain of. Counts as a question.
  const WallGrid* grid(const Obstacles& obstacles) const;

  // The grid if it was made already: for who asks again and again. Null otherwise; counts nothing.
  const WallGrid* gridIfMade() const {
    return isMade_.load(std::memory_order_acquire) ? grid_.get() : nullptr;
  }

  // The grid, made at once if need be: for who is about to ask many questions.
  const WallGrid* gridNow(const Obstacles& obstacles) const;

 private:
  // About as many as one grid costs to make.
  static constexpr int kQuestionsWithoutGrid = 5;

  RevisionStamp stamp_;
  const KorvaniCommon::Revision&
      obstacles_;  // everybody's; asked itself, since it is asked each time
  mutable std::atomic<int> questions_{0};
  mutable std::atomic<bool> isMade_{false};
  mutable std::mutex making_;
  mutable std::unique_ptr<const WallGrid> grid_;
};

}  // namespace KorvaniNavigation
