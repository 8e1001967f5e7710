#include "Common/Revision.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace KorvaniTest {
namespace {

using KorvaniCommon::nextRevisionStamp;
using KorvaniCommon::Revision;
using KorvaniCommon::RevisionStamp;

TEST(Revision, StartsBeforeEveryChange) {
  EXPECT_EQ(Revision().stamp(), 0U);
  EXPECT_GT(nextRevisionStamp(), 0U);
}

TEST(Revision, GrowsWithEveryChange) {
  Revision revision;
  revision.changed();
  const RevisionStamp first = revision.stamp();
  revision.changed();
  EXPECT_GT(revision.stamp(), first);
}

TEST(Revision, ALaterChangeOfAnotherThingHasTheGreaterStamp) {
  Revision a;
  Revision b;
  b.changed();
  a.changed();
  EXPECT_GT(a.stamp(), b.stamp());
}

TEST(Revision, ANullListenerIsToldNothing) {
  const RevisionStamp before = nextRevisionStamp();
  KorvaniCommon::tellChanged(nullptr);
  EXPECT_EQ(nextRevisionStamp(), before + 1);
}

TEST(Revision, ThreadsNeverGetTheSameStamp) {
  constexpr int kStamps = 1000;
  std::vector<RevisionStamp> stamps(std::size_t{4} * kStamps);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < 4; ++t) {
    threads.emplace_back([&stamps, t] {
      for (std::size_t i = 0; i < kStamps; ++i) stamps[t * kStamps + i] = nextRevisionStamp();
    });
  }
  for (auto& thread : threads) thread.join();
  std::sort(stamps.begin(), stamps.end());
  EXPECT_EQ(std::adjacent_find(stamps.begin(), stamps.end()), stamps.end());
}

}  // namespace
}  // namespace KorvaniTest
