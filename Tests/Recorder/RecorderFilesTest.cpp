#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "Building/BuildingReader.hpp"
#include "Recorder/RecorderFixture.hpp"
#include "Support/TextBuilding.hpp"

namespace KorvaniNavigation {
namespace {

using KorvaniTest::linesOf;
using KorvaniTest::TextBuilding;
using KorvaniTest::textOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class RecorderFiles : public KorvaniTest::RecorderFixture {
 protected:
  std::filesystem::path file(const std::string& name) const { return folder.path() / name; }

  void intersect(Recorder& recorder) {
    recorder.run(std::make_shared<IntersectionTask>(
        bundle(), KorvaniTest::at(KorvaniTest::kOrigin), [](const auto&) {}, true));
  }

  const TextBuilding building{"A--B"};
  const TextBuilding another{"A--B--C"};
};

TEST_F(RecorderFiles, AreNotMadeBeforeThereIsAGraph) {
  intersect(recording);
  recording.provideGraph(nullptr);
  announceGraph();
  recording.cancelAllTasks();
  EXPECT_THAT(recording.files(), IsEmpty());
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(RecorderFiles, AreABuildingAndATraceOfTheRecordersName) {
  recording.provideGraph(building.graph());
  EXPECT_EQ(navigation().graph(), building.graph());
  ASSERT_THAT(recording.files(), SizeIs(1));
  EXPECT_EQ(recording.files()[0].building, file("walk.building.geojson"));
  EXPECT_EQ(recording.files()[0].trace, file("walk.trace.ndjson"));
  EXPECT_EQ(KorvaniTools::readBuilding(file("walk.building.geojson")).nodes.size(), 2U);
  EXPECT_THAT(
      linesOf(file("walk.trace.ndjson")),
      ElementsAre(AllOf(HasSubstr("# KorvaniNavigation "), HasSubstr("walk.building.geojson"))));
  EXPECT_THAT(recording.problems(), IsEmpty());
}

TEST_F(RecorderFiles, TakeThePlaceOfThoseOfAnEarlierRun) {
  record(another.graph());
  intersect(recording);
  Recorder next(folder.path(), "walk");
  next.provideGraph(building.graph());
  EXPECT_THAT(linesOf(file("walk.trace.ndjson")), SizeIs(1));
  EXPECT_EQ(KorvaniTools::readBuilding(file("walk.building.geojson")).nodes.size(), 2U);
}

TEST_F(RecorderFiles, GoOnWithTheSameGraphAndWithOneOfTheSameContents) {
  record(building.graph());
  intersect(recording);
  recording.cancelAllTasks();
  record(building.graph());
  record(TextBuilding("A--B").graph());
  intersect(recording);
  EXPECT_THAT(recording.files(), SizeIs(1));
  EXPECT_THAT(lines(), SizeIs(3));
}

TEST_F(RecorderFiles, BeginAnewWithAnotherGraphAndSayTheConfigurationAgain) {
  config().setWalkingSpeed(1);
  record(building.graph());
  intersect(recording);
  record(another.graph());
  intersect(recording);
  ASSERT_THAT(recording.files(), SizeIs(2));
  EXPECT_EQ(recording.files()[1].building, file("walk-2.building.geojson"));
  EXPECT_EQ(recording.files()[1].trace, file("walk-2.trace.ndjson"));
  for (const auto& files : recording.files()) {
    EXPECT_THAT(linesOf(files.trace), SizeIs(3));
    EXPECT_EQ(linesOf(files.trace)[1], R"({"op":"config","fields":{"walkingSpeed":1.0}})");
  }
}

TEST_F(RecorderFiles, BeginAnewWithAGraphThatHasChanged) {
  record(building.graph());
  building.graph()->edgeFromNodeWithIdentifier(1, 2)->setDistance(70);
  record(building.graph());
  EXPECT_THAT(recording.files(), SizeIs(2));
}

TEST_F(RecorderFiles, AreMadeWithTheFirstLineWhenTheGraphCameWithoutTheRecorder) {
  provide(building.graph());
  intersect(recording);
  ASSERT_THAT(recording.files(), SizeIs(1));
  EXPECT_EQ(KorvaniTools::readBuilding(file("walk.building.geojson")).nodes.size(), 2U);
  provide(another.graph());
  intersect(recording);
  EXPECT_THAT(recording.files(), SizeIs(2));
}

TEST_F(RecorderFiles, HaveNoBuildingWhenAFileCannotHoldTheGraph) {
  std::ofstream(file("walk.building.geojson")) << "of an earlier run";
  building.region(0)->addNode(KorvaniTest::at(std::numeric_limits<double>::quiet_NaN(), 11, 0, 7));
  record(building.graph());
  EXPECT_EQ(navigation().graph(), building.graph());
  intersect(recording);
  ASSERT_THAT(recording.files(), SizeIs(1));
  EXPECT_TRUE(recording.files()[0].building.empty());
  EXPECT_FALSE(std::filesystem::exists(file("walk.building.geojson")));
  EXPECT_THAT(recording.problems(), ElementsAre(HasSubstr("building: node 7: found latitude nan")));
  EXPECT_THAT(remarks(), ElementsAre(testing::_, HasSubstr("node 7: found latitude nan")));
  EXPECT_THAT(lines(), SizeIs(1));
  record(building.graph());
  EXPECT_THAT(recording.files(), SizeIs(1)) << "the same once more";
}

TEST_F(RecorderFiles, BeginAnewWithAGraphThatAFileCannotHoldAnyMore) {
  record(building.graph());
  building.graph()->edgeFromNodeWithIdentifier(1, 2)->setDistance(-1);
  record(building.graph());
  ASSERT_THAT(recording.files(), SizeIs(2));
  EXPECT_FALSE(recording.files()[0].building.empty());
  EXPECT_TRUE(recording.files()[1].building.empty());
}

TEST_F(RecorderFiles, SayWhenEdgesOfNoLengthNeedAFlatBuilding) {
  config().setLevelHeight(0);
  const auto door = KorvaniTest::at(building.point("B")->coordinate(), 0, 9);
  building.region(0)->addNode(door);
  building.graph()->addEdge(std::make_shared<KRVNavEdge>(building.point("B"), door),
                            *building.point("B"), *door);
  record(building.graph());
  EXPECT_FALSE(recording.files()[0].building.empty());
  EXPECT_THAT(recording.problems(),
              ElementsAre(AllOf(HasSubstr("edges of length 0"), HasSubstr(": 1"))));
}

TEST_F(RecorderFiles, ThatCannotBeMadeDisturbNothing) {
  Recorder lost(folder.path() / "missing", "walk");
  lost.provideGraph(building.graph());
  EXPECT_EQ(navigation().graph(), building.graph());
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("B")}, recorder());
  lost.run(task);
  pump();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_THAT(lost.problems(),
              ElementsAre(AllOf(HasSubstr("walk.trace.ndjson"), HasSubstr("No such file")),
                          AllOf(HasSubstr("walk.building.geojson"), HasSubstr("No such file"))));
}

TEST_F(RecorderFiles, OnAFullDiskDisturbNothing) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  std::filesystem::create_symlink("/dev/full", file("walk.trace.ndjson"));
  std::filesystem::create_symlink("/dev/full", file("walk.building.geojson"));
  record(building.graph());
  intersect(recording);
  EXPECT_EQ(navigation().graph(), building.graph());
  EXPECT_THAT(recording.problems(), ElementsAre(HasSubstr("walk.trace.ndjson: could not be written"
                                                          " (No space left on device)"),
                                                HasSubstr("walk.building.geojson: could not")));
  EXPECT_FALSE(std::filesystem::exists(file("walk.building.geojson")));
}

TEST_F(RecorderFiles, StayWhenTheRecorderGoesWhileTasksGoOn) {
  auto brief = std::make_unique<Recorder>(folder.path(), "brief");
  brief->provideGraph(building.graph());
  announceGraph();
  const auto task =
      navigation().routingTask(building.point("A"), {building.point("B")}, recorder());
  brief->run(task);
  brief.reset();
  pump();
  announceGraph();
  EXPECT_EQ(deliveries().size(), 1U);
  EXPECT_THAT(linesOf(file("brief.trace.ndjson")), SizeIs(2));
}

}  // namespace
}  // namespace KorvaniNavigation
