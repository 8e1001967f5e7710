/// The traces of Tests/Golden, replayed again and again; scripts/check-golden looks at what they
/// give.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Building/BuildingReader.hpp"
#include "Json/EngineJson.hpp"
#include "Tools/Replaying.hpp"

namespace KorvaniTest {
namespace {

namespace fs = std::filesystem;
using KorvaniPlatform::MainQueueExecutor;
using KorvaniTools::Replay;

constexpr auto kSuffix = ".trace.ndjson";

fs::path goldenFolder() { return fs::path(KORVANI_SOURCE_DIR) / "Tests" / "Golden"; }

std::vector<std::string> goldenNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(goldenFolder())) {
    const std::string name = entry.path().filename().string();
    const auto end = name.rfind(kSuffix);
    if (end != std::string::npos) names.push_back(name.substr(0, end));
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// The building that a trace names in a comment.
fs::path buildingOf(const fs::path& trace) {
  const std::string key = "# building: ";
  std::ifstream file(trace);
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key, 0) == 0) return goldenFolder() / line.substr(key.size());
  }
  return {};
}

/// What the replay of a trace writes.
std::string replayed(const fs::path& trace, const std::unique_ptr<Replay> replay) {
  std::ifstream file = KorvaniTools::openTrace(trace);
  KorvaniTools::TraceReader reader(file, trace.string());
  std::string text;
  while (const auto line = reader.next()) {
    for (const auto& event : replay->carryOut(*line)) text += KorvaniTools::jsonText(event) + '\n';
  }
  return text;
}

/// Configurations that a trace makes last as long as the process. Between two replays they get
/// their defaults, which is enough for traces that make those they use first.
class GoldenReplay : public ReplayFixture, public testing::WithParamInterface<std::string> {
 protected:
  std::string onThreads() {
    std::string text = replayed(trace_, std::make_unique<Replay>(graph()));
    TearDown();
    return text;
  }

  std::string onTheMainQueue() {
    const auto workers = std::make_shared<MainQueueExecutor>();
    std::string text = replayed(trace_, std::make_unique<Replay>(graph(), workers));
    TearDown();
    return text;
  }

 private:
  std::shared_ptr<KRVNavGraph> graph() const {
    return makeGraph(KorvaniTools::readBuilding(buildingOf(trace_)));
  }

  const fs::path trace_ = goldenFolder() / (GetParam() + kSuffix);
};

TEST_P(GoldenReplay, GivesTheSameBytesEveryTimeWithThreadsAndWithout) {
  const std::string first = onThreads();
  EXPECT_FALSE(first.empty());
  for (int i = 1; i < 10; ++i) EXPECT_EQ(onThreads(), first);
  EXPECT_EQ(onTheMainQueue(), first);
}

std::string testName(const testing::TestParamInfo<std::string>& trace) {
  std::string name = trace.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Traces, GoldenReplay, testing::ValuesIn(goldenNames()), testName);

}  // namespace
}  // namespace KorvaniTest
