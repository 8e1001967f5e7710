// Every fast search against the plain one, on graphs that follow from seeds: the same nodes and the
// same cost, to the last bit. A failure names its seed; KORVANI_SEED in the environment has that
// one tried alone.

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Navigation/Path Finding/Arrays/PathSearch.hpp"
#include "Navigation/Path Finding/Arrays/WaveSearch.hpp"
#include "Navigation/Path Finding/Hierarchy/RoutingHierarchy.hpp"
#include "PlainWaves.hpp"
#include "SearchNet.hpp"

namespace KorvaniTest {
namespace {

using namespace KorvaniNavigation;

// With 12 kinds and 8 queries a seed: 384,000 cases. What checks memory and threads is much slower.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uint64_t kSeeds = 200;
#else
constexpr std::uint64_t kSeeds = 4000;
#endif
constexpr int kQueries = 8;

/// What is asked of a search: starts, targets, and whether barriers count.
struct Question {
  std::vector<StartNode> starts;
  std::vector<std::uint32_t> targets;
  bool barrierFree;
};

double startDistance(std::uint32_t style, const SearchNet& net, SeededNumbers& numbers) {
  switch (style) {
    case 0:
      return 0;
    case 1:
      return numbers.below(3);
    case 2:
      return 8 * numbers.unit();
    default:
      return net.length(numbers);
  }
}

/// Both ends of an edge, in any order, as for a position that was mapped onto it.
std::vector<StartNode> startsAt(double part, const SearchNet& net, SeededNumbers& numbers) {
  const std::uint32_t edge = numbers.below(net.edgeCount());
  const SearchGraph graph = net.arrays();
  std::vector<StartNode> starts{{net.beginOf(edge), part * graph.cost[edge]},
                                {graph.target[edge], (1 - part) * graph.cost[edge]}};
  if (numbers.chance(0.5)) std::swap(starts[0], starts[1]);
  return starts;
}

/// Anywhere on an edge, often at its end; some distances are off by a rounding.
std::vector<StartNode> startsOnAnEdge(const SearchNet& net, SeededNumbers& numbers) {
  std::vector<StartNode> starts = startsAt(numbers.chance(0.5) ? 0 : numbers.unit(), net, numbers);
  if (numbers.chance(0.3)) {
    double& distance = starts[numbers.below(2)].distance;
    distance = std::nextafter(distance, numbers.chance(0.5) ? 0 : 2 * distance);
  }
  return starts;
}

std::vector<StartNode> anyStarts(const SearchNet& net, SeededNumbers& numbers) {
  const std::uint32_t style = numbers.below(4);
  if (style != 0 && net.edgeCount() > 0 && numbers.chance(0.3)) return startsOnAnEdge(net, numbers);
  std::vector<StartNode> starts;
  for (std::uint32_t i = 1 + numbers.below(numbers.chance(0.8) ? 2 : 5); i > 0; --i) {
    starts.push_back({numbers.below(net.nodeCount()), startDistance(style, net, numbers)});
  }
  if (numbers.chance(0.1)) starts.push_back({starts[0].node, 3 * numbers.unit()});
  return starts;
}

Question anyQuestion(const SearchNet& net, SeededNumbers& numbers) {
  Question question{anyStarts(net, numbers), {}, numbers.chance(0.25)};
  for (std::uint32_t i = 1 + numbers.below(numbers.chance(0.8) ? 4 : 6); i > 0; --i) {
    question.targets.push_back(numbers.below(net.nodeCount()));
  }
  if (numbers.chance(0.15)) question.targets.push_back(question.starts.back().node);
  if (numbers.chance(0.1)) question.targets.push_back(question.targets[0]);
  return question;
}

std::string textOf(const std::optional<FoundPath>& path) {
  if (!path) return "no way";
  std::string text = "cost " + std::to_string(path->cost) + ":";
  for (const std::uint32_t node : path->nodes) text.append(" ").append(std::to_string(node));
  return text;
}

class PathSearchSeeds : public testing::TestWithParam<int> {
 protected:
  NetKind kind() const { return static_cast<NetKind>(GetParam()); }

  /// The seeds of the kind, or the one in the environment.
  std::vector<std::uint64_t> seeds() const {
    if (const char* only = std::getenv("KORVANI_SEED")) return {std::strtoull(only, nullptr, 10)};
    std::vector<std::uint64_t> seeds(kSeeds);
    for (std::uint64_t i = 0; i < kSeeds; ++i)
      seeds[i] = 1000 * static_cast<std::uint64_t>(GetParam()) * kSeeds + i;
    return seeds;
  }

  static void expectSame(const std::optional<FoundPath>& found,
                         const std::optional<FoundPath>& expected, const char* search) {
    ASSERT_EQ(textOf(found), textOf(expected)) << search;
    if (!expected) return;
    ASSERT_EQ(found->cost, expected->cost) << search;
  }
};

/// All searches of one graph.
class Searches {
 public:
  explicit Searches(const SearchGraph& graph)
      : waves(graph), path(graph, history), all(graph, false), free(graph, true) {}

  const RoutingHierarchy& hierarchyFor(const SearchQuery& query) const {
    return query.barrierFree ? free : all;
  }

  SearchHistory history;
  WaveSearch waves;
  PathSearch path;
  RoutingHierarchy all;
  RoutingHierarchy free;
};

std::optional<FoundPath> askHierarchy(const RoutingHierarchy& hierarchy, const SearchQuery& query,
                                      const std::optional<FoundPath>& otherwise) {
  using Outcome = RoutingHierarchy::Outcome;
  RoutingHierarchy::Answer answer = hierarchy.find(query);
  if (answer.outcome == Outcome::undecided) return otherwise;
  if (answer.outcome == Outcome::found) return answer.path;
  return std::nullopt;
}

TEST_P(PathSearchSeeds, EverySearchFindsTheWayOfThePlainOne) {
  const std::atomic<bool> interrupted{false};
  for (const std::uint64_t seed : seeds()) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    SeededNumbers numbers(seed);
    const SearchNet net(kind(), numbers);
    const SearchGraph graph = net.arrays();
    const Searches searches(graph);
    for (int i = 0; i < kQueries; ++i) {
      const Question question = anyQuestion(net, numbers);
      const SearchQuery query{question.starts, question.targets, question.barrierFree, interrupted};
      const auto expected = plainWaves(graph, query);
      expectSame(searches.waves.find(query), expected, "waves");
      expectSame(askHierarchy(searches.hierarchyFor(query), query, expected), expected,
                 "hierarchy");
      expectSame(searches.path.find(query), expected, "all of them");
      if (HasFatalFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, PathSearchSeeds, testing::Range(0, kNetKinds),
                         [](const testing::TestParamInfo<int>& number) {
                           return nameOf(static_cast<NetKind>(number.param));
                         });

using AnyStarts = std::vector<StartNode> (*)(const SearchNet& net, SeededNumbers& numbers);

std::vector<StartNode> startAtANode(const SearchNet& net, SeededNumbers& numbers) {
  return {{numbers.below(net.nodeCount()), 1}};
}

/// As of a position that was mapped onto an edge, exactly where it begins.
std::vector<StartNode> startsAtAnEnd(const SearchNet& net, SeededNumbers& numbers) {
  return startsAt(0, net, numbers);
}

/// Of the ways to a node, how many the hierarchy decides by itself.
double shareDecided(NetKind kind, AnyStarts drawStarts) {
  const std::atomic<bool> interrupted{false};
  int found = 0;
  int decided = 0;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    SeededNumbers numbers(seed);
    const SearchNet net(kind, numbers);
    const SearchGraph graph = net.arrays();
    const RoutingHierarchy hierarchy(graph, false);
    for (int i = 0; i < kQueries; ++i) {
      if (net.edgeCount() == 0) continue;
      const std::vector<StartNode> starts = drawStarts(net, numbers);
      const std::vector<std::uint32_t> targets{numbers.below(net.nodeCount())};
      const SearchQuery query{starts, targets, false, interrupted};
      const auto outcome = hierarchy.find(query).outcome;
      found += outcome == RoutingHierarchy::Outcome::unreachable ? 0 : 1;
      decided += outcome == RoutingHierarchy::Outcome::found ? 1 : 0;
    }
  }
  return static_cast<double>(decided) / found;
}

TEST(RoutingHierarchyShare, LinksOfLengthZeroLeaveNearlyAllQuestionsToTheHierarchy) {
  EXPECT_GT(shareDecided(NetKind::floors, startAtANode), 0.97);
  EXPECT_GT(shareDecided(NetKind::anyLengths, startAtANode), 0.99);
}

TEST(RoutingHierarchyShare, APositionExactlyOnANodeLeavesNearlyAllQuestionsToTheHierarchy) {
  EXPECT_GT(shareDecided(NetKind::floors, startsAtAnEnd), 0.97);
  EXPECT_GT(shareDecided(NetKind::anyLengths, startsAtAnEnd), 0.97);
}

}  // namespace
}  // namespace KorvaniTest
