#include "Recorder/RecordFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Recorder/Problems.hpp"
#include "Recorder/TemporaryFolder.hpp"

namespace KorvaniRecorder {
namespace {

using KorvaniTest::TemporaryFolder;
using KorvaniTest::textOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

TEST(RecordFile, IsWholeAfterEachLine) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "a.txt";
  RecordFile file(path);
  EXPECT_FALSE(file.append("one\n"));
  EXPECT_EQ(textOf(path), "one\n");
  EXPECT_FALSE(file.append("two\n"));
  EXPECT_EQ(textOf(path), "one\ntwo\n");
}

TEST(RecordFile, TakesThePlaceOfAnEarlierOne) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "a.txt";
  EXPECT_FALSE(RecordFile(path).append("a long line\n"));
  EXPECT_FALSE(RecordFile(path).append("short\n"));
  EXPECT_EQ(textOf(path), "short\n");
}

TEST(RecordFile, SaysOnceWhichFileCannotBeMadeAndWhy) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "missing" / "a.txt";
  RecordFile file(path);
  EXPECT_THAT(file.append("one\n"),
              Optional(AllOf(HasSubstr(path.string()), HasSubstr("No such file or directory"))));
  EXPECT_FALSE(file.append("two\n"));
}

TEST(RecordFile, EndsWithTheFirstFailure) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  RecordFile file("/dev/full");
  EXPECT_THAT(file.append("one\n"), Optional(HasSubstr("No space left")));
  EXPECT_FALSE(file.append("two\n"));
}

TEST(Problems, AreKeptInOrder) {
  Problems problems;
  problems.add("one");
  problems.add("two");
  EXPECT_THAT(problems.list(), ElementsAre("one", "two"));
}

TEST(Problems, BeyondAHundredAreCounted) {
  Problems problems;
  for (int i = 0; i < 123; ++i) problems.add(std::to_string(i));
  ASSERT_EQ(problems.list().size(), 101U);
  EXPECT_EQ(problems.list().back(), "and 23 more");
}

}  // namespace
}  // namespace KorvaniRecorder
