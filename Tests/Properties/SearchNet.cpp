#include "SearchNet.hpp"

#include <algorithm>
#include <utility>

namespace KorvaniTest {

std::string nameOf(NetKind kind) {
  static const char* const names[kNetKinds] = {"WholeLengths", "AnyLengths",  "NothingAmongOthers",
                                               "OnlyNothing",  "NearTies",    "Tenths",
                                               "Tree",         "TinyAndHuge", "Grid",
                                               "BentGrid",     "Floors",      "RegularFloors"};
  return names[static_cast<int>(kind)];
}

SearchNet::SearchNet(NetKind kind, SeededNumbers& numbers) : kind_(kind) {
  switch (kind) {
    case NetKind::tree:
      drawTree(numbers);
      shuffle(numbers);
      break;
    case NetKind::grid:
    case NetKind::bentGrid:
      drawGrid(numbers);
      if (numbers.chance(0.5)) shuffle(numbers);
      break;
    case NetKind::floors:
    case NetKind::regularFloors:
      drawFloors(numbers);
      shuffle(numbers);
      break;
    default:
      drawSmall(numbers);
  }
  fillArrays();
}

double SearchNet::length(SeededNumbers& numbers) const {
  switch (kind_) {
    case NetKind::wholeLengths:
      return numbers.below(4);
    case NetKind::nothingAmongOthers:
      return numbers.chance(0.4) ? 0 : 10 * numbers.unit();
    case NetKind::onlyNothing:
      return 0;
    case NetKind::nearTies:
      return 1 + numbers.below(3) * 0x1p-50 + (numbers.chance(0.5) ? 0 : numbers.below(3) * 1e-7);
    case NetKind::tenths:
      return numbers.below(12) * 0.1;
    case NetKind::tree:
      return numbers.chance(0.5) ? 0 : numbers.unit();
    case NetKind::tinyAndHuge: {
      constexpr double kSizes[] = {1e-300, 1e-18, 1e-9, 1e-7, 1e-3, 0, 1, 1e3, 1e8, 1e15};
      return kSizes[numbers.below(10)] * (numbers.chance(0.5) ? 1 : numbers.unit());
    }
    default:
      return 10 * numbers.unit();
  }
}

void SearchNet::join(std::uint32_t from, std::uint32_t to, double cost, bool barrierFree) {
  edges_.push_back({from, to, cost, barrierFree});
}

void SearchNet::joinBothWays(std::uint32_t a, std::uint32_t b, double cost, bool barrierFree) {
  join(a, b, cost, barrierFree);
  join(b, a, cost, barrierFree);
}

void SearchNet::drawSmall(SeededNumbers& numbers) {
  nodeCount_ = 1 + numbers.below(numbers.chance(0.5) ? 6 : 24);
  for (std::uint32_t i = numbers.below(4 * nodeCount_ + 1); i > 0; --i) {
    const std::uint32_t a = numbers.below(nodeCount_);
    const std::uint32_t b = numbers.below(nodeCount_);
    const double cost = length(numbers);
    const bool barrierFree = numbers.chance(0.8);
    if (numbers.chance(0.5)) {
      join(a, b, cost, barrierFree);
    } else {
      joinBothWays(a, b, cost, barrierFree);
    }
  }
}

void SearchNet::drawTree(SeededNumbers& numbers) {
  nodeCount_ = 1 + numbers.below(24);
  for (std::uint32_t i = 1; i < nodeCount_; ++i) {
    joinBothWays(i, numbers.below(i), length(numbers), numbers.chance(0.9));
  }
  for (std::uint32_t i = numbers.below(4); i > 0; --i) {
    joinBothWays(numbers.below(nodeCount_), numbers.below(nodeCount_), numbers.unit());
  }
}

double SearchNet::even(double length, SeededNumbers& numbers) const {
  const bool regular = kind_ == NetKind::grid || kind_ == NetKind::regularFloors;
  return regular ? length : length * (0.75 + 0.5 * numbers.unit());
}

void SearchNet::drawGrid(SeededNumbers& numbers) {
  const std::uint32_t side = 2 + numbers.below(9);
  nodeCount_ = side * side;
  for (std::uint32_t i = 0; i < nodeCount_; ++i) {
    if ((i + 1) % side != 0) joinBothWays(i, i + 1, even(5, numbers));
    if (i + side < nodeCount_) joinBothWays(i, i + side, even(5, numbers));
  }
}

// Levels above each other, joined by stairs and lifts.
void SearchNet::drawFloors(SeededNumbers& numbers) {
  std::vector<std::uint32_t> below;
  for (std::uint32_t level = 1 + numbers.below(3); level > 0; --level) {
    const std::vector<std::uint32_t> crossings = drawFloor(numbers);
    for (std::uint32_t i = 0; !below.empty() && i < 3; ++i) {
      const std::size_t shaft = (std::size_t{i} * 7) % std::min(below.size(), crossings.size());
      joinBothWays(below[shaft], crossings[shaft], even(i == 0 ? 12 : 20, numbers), i == 0);
    }
    below = crossings;
  }
}

// Corridors along a grid of crossings.
std::vector<std::uint32_t> SearchNet::drawFloor(SeededNumbers& numbers) {
  const std::uint32_t columns = 1 + numbers.below(4);
  std::vector<std::uint32_t> crossings(columns * (1 + numbers.below(4)));
  for (std::uint32_t& crossing : crossings) crossing = newNode();
  for (std::uint32_t i = 0; i < crossings.size(); ++i) {
    if ((i + 1) % columns != 0) drawStretch(crossings[i], crossings[i + 1], numbers);
    if (i + columns < crossings.size() && (i % columns == 0 || numbers.chance(0.5))) {
      drawStretch(crossings[i], crossings[i + columns], numbers);
    }
  }
  return crossings;
}

// Rooms along a corridor; some have a door that costs nothing to pass, a few can only be entered.
void SearchNet::drawStretch(std::uint32_t from, std::uint32_t to, SeededNumbers& numbers) {
  std::uint32_t last = from;
  for (std::uint32_t i = numbers.below(4); i > 0; --i) {
    const std::uint32_t place = newNode();
    joinBothWays(last, place, even(4, numbers));
    std::uint32_t door = place;
    if (numbers.chance(0.3)) {
      door = newNode();
      joinBothWays(place, door, 0);
    }
    const std::uint32_t room = newNode();
    join(door, room, even(3, numbers), numbers.chance(0.95));
    if (numbers.chance(0.97)) join(room, door, even(3, numbers));
    last = numbers.chance(0.8) ? place : door;
  }
  joinBothWays(last, to, even(4, numbers));
}

void SearchNet::shuffle(SeededNumbers& numbers) {
  std::vector<std::uint32_t> order(nodeCount_);
  for (std::uint32_t i = 0; i < nodeCount_; ++i) order[i] = i;
  for (std::uint32_t i = nodeCount_; i > 1; --i) std::swap(order[i - 1], order[numbers.below(i)]);
  for (Edge& edge : edges_) {
    edge.from = order[edge.from];
    edge.to = order[edge.to];
  }
  for (auto i = static_cast<std::uint32_t>(edges_.size()); i > 1; --i) {
    std::swap(edges_[i - 1], edges_[numbers.below(i)]);
  }
}

void SearchNet::fillArrays() {
  std::stable_sort(edges_.begin(), edges_.end(),
                   [](const Edge& a, const Edge& b) { return a.from < b.from; });
  firstEdge_.assign(nodeCount_ + 1, 0);
  for (const Edge& edge : edges_) {
    ++firstEdge_[edge.from + 1];
    target_.push_back(edge.to);
    cost_.push_back(edge.cost);
    barrierFree_.push_back(edge.barrierFree ? 1 : 0);
  }
  for (std::uint32_t node = 0; node < nodeCount_; ++node) firstEdge_[node + 1] += firstEdge_[node];
}

std::uint32_t SearchNet::beginOf(std::uint32_t edge) const { return edges_[edge].from; }

}  // namespace KorvaniTest
