#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "Platform/Export.hpp"

namespace KorvaniCommon {

/// A moment in the life of everything that counts its changes; 0 is before the first change.
using RevisionStamp = std::uint64_t;

/// The next stamp: greater than every stamp given out before, anywhere in the process. Any thread.
KORVANI_API RevisionStamp nextRevisionStamp();

/// When something changed last.
///
/// Stamps come from one sequence for the whole process. So the greatest stamp of all parts of a
/// thing is a stamp of the whole: it grows with every change of a part, and when one part is put
/// in the place of another (which is a change of the whole) it grows as well, whatever the two
/// parts' own stamps were. Sums of counters would not tell such parts apart.
///
///     Revision revision;
///     const RevisionStamp before = revision.stamp();
///     revision.changed();
///     assert(revision.stamp() > before);
///
/// Thread safety: stamp() may be called from any thread at any time; so may changed().
class Revision {
 public:
  Revision() = default;
  Revision(const Revision&) = delete;
  Revision& operator=(const Revision&) = delete;

  RevisionStamp stamp() const { return stamp_.load(std::memory_order_acquire); }
  void changed() { stamp_.store(nextRevisionStamp(), std::memory_order_release); }

 private:
  std::atomic<RevisionStamp> stamp_{0};
};

/// Where a container tells that it changed; nowhere when null. Shared, since what a container
/// hands out (a row of it) may outlive the owner of both.
using RevisionListener = std::shared_ptr<Revision>;

inline void tellChanged(const RevisionListener& listener) {
  if (listener) listener->changed();
}

}  // namespace KorvaniCommon
