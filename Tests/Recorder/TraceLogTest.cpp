#include "Recorder/TraceLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Recorder/TemporaryFolder.hpp"
#include "Support/FacadeFixture.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniNavigation::IntersectionTask;
using KorvaniNavigation::RoutingTask;
using KorvaniTest::linesOf;
using testing::ElementsAre;
using testing::HasSubstr;

class TraceLogTest : public KorvaniTest::FacadeFixture {
 protected:
  std::vector<std::string> lines() const { return linesOf(file); }

  const KorvaniTest::TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "a.trace.ndjson";
  Problems problems;
  TraceLog log{file, "a\nb", problems};
};

TEST_F(TraceLogTest, ARemarkIsOneLine) { EXPECT_THAT(lines(), ElementsAre("# a b")); }

TEST_F(TraceLogTest, AProblemIsKeptAndRemarked) {
  log.complain("gone");
  EXPECT_THAT(problems.list(), ElementsAre("gone"));
  EXPECT_THAT(lines(), ElementsAre("# a b", "# gone"));
}

TEST_F(TraceLogTest, ATaskWithoutPositionIsLeftOut) {
  const auto task = std::make_shared<IntersectionTask>(bundle(), nullptr, nullptr, true);
  log.add(*task);
  EXPECT_THAT(lines(), ElementsAre("# a b", HasSubstr("intersect: there is no point")));
}

TEST_F(TraceLogTest, ARoutingThatCannotBeToldEndsTheOneBefore) {
  const auto here = KorvaniTest::at(48, 11);
  const auto known = RoutingTask::create(bundle(), here, {here}, nullptr);
  const auto broken = RoutingTask::create(bundle(), here, {nullptr}, nullptr);
  log.add(known);
  log.add(broken);
  log.addDestinations(known, {here});
  log.addDestinations(broken, {here});
  ASSERT_EQ(lines().size(), 3U);
  EXPECT_THAT(lines()[1], HasSubstr(R"("op":"route")"));
  EXPECT_THAT(lines()[2], HasSubstr("route: there is no point"));
}

TEST_F(TraceLogTest, AProblemWithTheFileEndsTheTrace) {
  TraceLog lost(folder.path() / "missing" / "a", "about", problems);
  lost.addCancel();
  EXPECT_THAT(problems.list(), ElementsAre(HasSubstr("the trace ends before it")));
}

}  // namespace
}  // namespace KorvaniRecorder
