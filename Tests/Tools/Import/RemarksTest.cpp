#include "Support/Remarks.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KorvaniTest {
namespace {

using KorvaniTools::Remarks;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Remarks::Kind kLost{"way is lost", "ways are lost"};
constexpr Remarks::Kind kOdd{"node is odd", "nodes are odd"};

TEST(Remarks, AreNoneAtFirst) { EXPECT_THAT(Remarks().sentences(), IsEmpty()); }

TEST(Remarks, SumUpByKindInTheOrderOfTheFirst) {
  Remarks remarks;
  remarks.add(kOdd, "node/1");
  remarks.add(kLost, "way/2");
  remarks.add(kLost, "way/3");
  EXPECT_THAT(remarks.sentences(),
              ElementsAre("1 node is odd: node/1", "2 ways are lost: way/2, way/3"));
}

TEST(Remarks, NameFiveFeaturesAtMost) {
  Remarks remarks;
  for (const char* source : {"way/1", "way/2", "way/3", "way/4", "way/5", "way/6", "way/7"}) {
    remarks.add(kLost, source);
  }
  EXPECT_THAT(remarks.sentences(),
              ElementsAre("7 ways are lost: way/1, way/2, way/3, way/4, way/5 and 2 more"));
  EXPECT_THAT(remarks.sentences(1), ElementsAre("7 ways are lost: way/1 and 6 more"));
}

TEST(Remarks, NameAllFeaturesWhenAsked) {
  Remarks remarks;
  std::string all = "way/1";
  remarks.add(kLost, all);
  for (int i = 2; i <= 40; ++i) {
    const std::string source = "way/" + std::to_string(i);
    remarks.add(kLost, source);
    all += ", " + source;
  }
  EXPECT_THAT(remarks.sentences(Remarks::kAll), ElementsAre("40 ways are lost: " + all));
}

TEST(Remarks, NoteWhatHoldsForExamples) {
  Remarks remarks;
  remarks.note("unit.geojson: no category", "\"a\"");
  remarks.note("level.geojson: no name", "\"l\"");
  remarks.note("unit.geojson: no category", "\"b\"");
  EXPECT_THAT(remarks.sentences(), ElementsAre("unit.geojson: no category: \"a\", \"b\"",
                                               "level.geojson: no name: \"l\""));
}

TEST(Remarks, PutSentencesTogetherThatGoOnAlike) {
  Remarks remarks;
  remarks.addSentence("node/1 meets nothing on level 0");
  remarks.addSentence("node/1 meets nothing on level 1");
  remarks.addSentence("way/2 meets nothing on level 0");
  remarks.addSentence("way/3 meets nothing on level 0");
  EXPECT_THAT(remarks.sentences(),
              ElementsAre("node/1 meets nothing on level 0; so with way/2, way/3",
                          "node/1 meets nothing on level 1"));
  EXPECT_THAT(remarks.sentences(1).front(), "node/1 meets nothing on level 0; so with 2 more");
}

TEST(Remarks, LeaveWhatIsInBracketsToTheFeature) {
  Remarks remarks;
  remarks.addSentence("way/1 passes a wall: opened there (way/8)");
  remarks.addSentence("way/2 passes a wall: opened there (way/9)");
  remarks.addSentence("way/3 lies on no level (5): left out");
  EXPECT_THAT(remarks.sentences(),
              ElementsAre("way/1 passes a wall: opened there (way/8); so with way/2 (way/9)",
                          "way/3 lies on no level (5): left out"));
}

TEST(Remarks, TakeSentencesOfAnyShape) {
  for (const char* sentence : {"", " ", "word", "word (x)", "(x)", " (x)"}) {
    Remarks remarks;
    remarks.addSentence(sentence);
    EXPECT_THAT(remarks.sentences(), ElementsAre(sentence));
  }
}

TEST(Remarks, CountAFeatureOnce) {
  Remarks remarks;
  for (const char* source : {"way/1", "way/2", "way/1"}) remarks.add(kLost, source);
  EXPECT_THAT(remarks.sentences(), ElementsAre("2 ways are lost: way/1, way/2"));
}

}  // namespace
}  // namespace KorvaniTest
