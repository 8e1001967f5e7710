#include "Import/Osm/Remarks.hpp"

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
              ElementsAre("7 ways are lost: way/1, way/2, way/3, way/4, way/5, ..."));
}

TEST(Remarks, CountAFeatureOnce) {
  Remarks remarks;
  for (const char* source : {"way/1", "way/2", "way/1"}) remarks.add(kLost, source);
  EXPECT_THAT(remarks.sentences(), ElementsAre("2 ways are lost: way/1, way/2"));
}

}  // namespace
}  // namespace KorvaniTest
