#include "Drawing/LabelPlacement.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace KorvaniTools {
namespace {

constexpr double kGap = 3;        // pixels between a mark and its text
constexpr double kCellSize = 96;  // pixels, about a label's length
/// Two places of one spot may differ by a rounding error, which no magnification in use shows.
constexpr double kLargestZoom = 1000;

PixelBox moved(const PixelBox& box, double x, double y) {
  return {box.left + x, box.top + y, box.right + x, box.bottom + y};
}

PixelBox scaled(const PixelBox& box, double factor) {
  return {box.left * factor, box.top * factor, box.right * factor, box.bottom * factor};
}

bool holds(const PixelBox& outer, const PixelBox& inner) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

/// The box grown to hold its place. Two such boxes that do not overlap keep off each other
/// however far their places move apart.
PixelBox withPlace(const PixelBox& box) {
  return {std::min(box.left, 0.0), std::min(box.top, 0.0), std::max(box.right, 0.0),
          std::max(box.bottom, 0.0)};
}

PixelBox united(const PixelBox& a, const PixelBox& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

/// The box moved onto the paper, as far as it is not too large for it.
PixelBox slidInto(const PixelBox& paper, const PixelBox& box) {
  const double right = std::max(paper.left - box.left, std::min(0.0, paper.right - box.right));
  const double down = std::max(paper.top - box.top, std::min(0.0, paper.bottom - box.bottom));
  return moved(box, right, down);
}

/// The text's box beside what keeps it off, seen from the wish's place. `slant` is how much of the
/// corners of `keepOff` counts.
PixelBox boxOf(const LabelTry& attempt, const PixelBox& keepOff, double slant) {
  const double across = attempt.width / 2;
  const double down = attempt.height / 2;
  const PixelBox centred{-across, -down, across, down};
  const double right = across + keepOff.right + kGap;
  const double left = -across + keepOff.left - kGap;
  const double below = down + keepOff.bottom + kGap;
  const double above = -down + keepOff.top - kGap;
  const double slantRight = across + keepOff.right * slant + 1;
  const double slantLeft = -across + keepOff.left * slant - 1;
  const double slantBelow = down + keepOff.bottom * slant + 1;
  const double slantAbove = -down + keepOff.top * slant - 1;
  switch (attempt.side) {
    case LabelSide::right:
      return moved(centred, right, 0);
    case LabelSide::left:
      return moved(centred, left, 0);
    case LabelSide::below:
      return moved(centred, 0, below);
    case LabelSide::above:
      return moved(centred, 0, above);
    case LabelSide::belowRight:
      return moved(centred, slantRight, slantBelow);
    case LabelSide::aboveRight:
      return moved(centred, slantRight, slantAbove);
    case LabelSide::belowLeft:
      return moved(centred, slantLeft, slantBelow);
    case LabelSide::aboveLeft:
      return moved(centred, slantLeft, slantAbove);
    case LabelSide::centre:
      break;
  }
  return centred;
}

/// Beside the wish's own round mark.
PixelBox boxOf(const LabelTry& attempt, double radius) {
  return boxOf(attempt, {-radius, -radius, radius, radius}, 0.7);
}

/// What keeps its size and moves with its place when the picture is magnified.
struct Fixed {
  double x = 0;  ///< its place, pixels at magnification 1
  double y = 0;
  PixelBox box;  ///< seen from its place
};

/// The magnifications between `from` and `to` at which `shift` times the magnification lies
/// between `low` and `high`, borders left out; the first of the two is not smaller when none does.
std::pair<double, double> shiftedBetween(double shift, double low, double high, double from,
                                         double to) {
  if (shift == 0) return low < 0 && high > 0 ? std::make_pair(from, to) : std::make_pair(to, from);
  const double first = shift > 0 ? low / shift : high / shift;
  const double last = shift > 0 ? high / shift : low / shift;
  return {std::max(from, first), std::min(to, last)};
}

/// Whether one lies upon the other at `zoom` or when it is magnified further.
bool everMeet(const Fixed& a, const Fixed& b, double zoom) {
  const auto across = shiftedBetween(b.x - a.x, a.box.left - b.box.right, a.box.right - b.box.left,
                                     zoom, kLargestZoom);
  const auto down = shiftedBetween(b.y - a.y, a.box.top - b.box.bottom, a.box.bottom - b.box.top,
                                   zoom, kLargestZoom);
  return std::max(across.first, down.first) < std::min(across.second, down.second);
}

/// What a label keeps off, from the best spots to the last resort.
enum class Regard {
  everything,
  labelsAndHardMarks,
  labels,
  nothing,
};

/// What lies on the paper, found by where it is.
class BoxIndex {
 public:
  struct Entry {
    Fixed shape;
    std::optional<std::size_t> mark;  ///< absent for a label
    bool soft = false;
  };

  explicit BoxIndex(double zoom) : zoom_(zoom) {}

  void add(const Entry& entry) {
    eachCell(reachOf(entry.shape), [&](std::uint64_t cell) {
      cells_[cell].push_back(entries_.size());
      return true;
    });
    entries_.push_back(entry);
  }

  /// Whether `wish` may have its text there.
  bool isFree(const Fixed& text, const LabelWish& wish, Regard regard) const {
    const auto disturbs = [&](std::size_t index) {
      const Entry& entry = entries_[index];
      return counts(entry, wish, regard) && everMeet(text, entry.shape, zoom_);
    };
    // What does not reach into each other keeps apart however far the places move apart.
    return eachCell(reachOf(text), [&](std::uint64_t cell) {
      const auto found = cells_.find(cell);
      return found == cells_.end() ||
             std::none_of(found->second.begin(), found->second.end(), disturbs);
    });
  }

  /// What the marks of others that lie upon the wish's place cover, seen from it; absent: nothing.
  std::optional<PixelBox> marksUpon(const LabelWish& wish) const {
    std::optional<PixelBox> covered;
    const PixelBox spot{wish.x * zoom_, wish.y * zoom_, wish.x * zoom_, wish.y * zoom_};
    eachCell(spot, [&](std::uint64_t cell) {
      const auto found = cells_.find(cell);
      if (found == cells_.end()) return true;
      for (const std::size_t index : found->second) {
        const Entry& entry = entries_[index];
        if (!entry.mark || entry.mark == wish.mark) continue;
        const PixelBox box = moved(entry.shape.box, (entry.shape.x - wish.x) * zoom_,
                                   (entry.shape.y - wish.y) * zoom_);
        if (holds(box, {0, 0, 0, 0})) covered = united(box, covered.value_or(box));
      }
      return true;
    });
    return covered;
  }

 private:
  static bool counts(const Entry& entry, const LabelWish& wish, Regard regard) {
    if (!entry.mark) return regard != Regard::nothing;
    if (entry.mark == wish.mark) return false;
    return regard == Regard::everything || (regard == Regard::labelsAndHardMarks && !entry.soft);
  }

  /// On the magnified paper, from the place to the end of the box.
  PixelBox reachOf(const Fixed& shape) const {
    return moved(withPlace(shape.box), shape.x * zoom_, shape.y * zoom_);
  }

  /// Calls `visit` for the cells that the box touches as long as it says true.
  template <typename Visit>
  static bool eachCell(const PixelBox& box, const Visit& visit) {
    const auto cellOf = [](double pixel) {
      return static_cast<std::int32_t>(std::floor(std::clamp(pixel, -1e8, 1e8) / kCellSize));
    };
    for (std::int32_t row = cellOf(box.top); row <= cellOf(box.bottom); ++row) {
      for (std::int32_t column = cellOf(box.left); column <= cellOf(box.right); ++column) {
        const auto cell = (static_cast<std::uint64_t>(static_cast<std::uint32_t>(row)) << 32U) |
                          static_cast<std::uint32_t>(column);
        if (!visit(cell)) return false;
      }
    }
    return true;
  }

  const double zoom_;
  std::vector<Entry> entries_;
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> cells_;
};

/// Puts labels onto the paper, one magnification after the other.
class Placement {
 public:
  Placement(const std::vector<LabelWish>& wishes, const PixelBox& paper,
            const std::vector<FixedMark>& marks)
      : wishes_(wishes), paper_(paper), marks_(marks), order_(wishes.size()) {
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::stable_sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
      return wishes[a].priority > wishes[b].priority;
    });
  }

  void placeAt(double zoom) {
    BoxIndex taken(zoom);
    for (std::size_t i = 0; i < marks_.size(); ++i) {
      const FixedMark& mark = marks_[i];
      taken.add({{mark.x, mark.y, mark.box}, i, mark.soft});
    }
    for (const PlacedLabel& label : placed_) {
      const LabelWish& wish = wishes_[label.wish];
      taken.add({{wish.x, wish.y, label.box}, {}, false});
    }
    std::vector<std::size_t> unmet;
    for (const std::size_t index : order_) {
      if (!place(index, zoom, taken)) unmet.push_back(index);
    }
    order_ = std::move(unmet);
  }

  std::vector<PlacedLabel> take() { return std::move(placed_); }

 private:
  bool place(std::size_t index, double zoom, BoxIndex& taken) {
    const LabelWish& wish = wishes_[index];
    if (isSaidNear(wish, zoom)) return false;
    std::optional<PlacedLabel> found = firstFree(wish, zoom, taken, Regard::everything);
    if (!found && wish.insists) found = resort(wish, zoom, taken);
    if (!found) return false;
    found->wish = index;
    taken.add({{wish.x, wish.y, found->box}, {}, false});
    placed_.push_back(*found);
    if (wish.saying) said_[*wish.saying].push_back(index);
    return true;
  }

  /// The first try that is free, beside all marks on the spot or else beside its own alone.
  std::optional<PlacedLabel> firstFree(const LabelWish& wish, double zoom, const BoxIndex& taken,
                                       Regard regard) const {
    const auto isGood = [&](const LabelTry& attempt, const PixelBox& box) {
      const PixelBox text = moved(box, wish.x * zoom, wish.y * zoom);
      return holds(scaled(paper_, zoom), text) &&
             (!attempt.within || holds(scaled(*attempt.within, zoom), text)) &&
             taken.isFree({wish.x, wish.y, box}, wish, regard);
    };
    const PixelBox own{-wish.radius, -wish.radius, wish.radius, wish.radius};
    const std::optional<PixelBox> upon = taken.marksUpon(wish);
    for (std::size_t i = 0; upon && i < wish.tries.size(); ++i) {
      const PixelBox box = boxOf(wish.tries[i], united(own, *upon), 1);
      if (isGood(wish.tries[i], box)) return PlacedLabel{0, i, box, zoom};
    }
    for (std::size_t i = 0; i < wish.tries.size(); ++i) {
      const PixelBox box = boxOf(wish.tries[i], wish.radius);
      if (isGood(wish.tries[i], box)) return PlacedLabel{0, i, box, zoom};
    }
    return {};
  }

  /// Where what must be written lies on as little as possible.
  std::optional<PlacedLabel> resort(const LabelWish& wish, double zoom,
                                    const BoxIndex& taken) const {
    for (const Regard regard : {Regard::labelsAndHardMarks, Regard::labels, Regard::nothing}) {
      if (auto found = firstFree(wish, zoom, taken, regard)) return found;
    }
    const PixelBox spot{wish.x * zoom, wish.y * zoom, wish.x * zoom, wish.y * zoom};
    const PixelBox paper = scaled(paper_, zoom);
    // Off the paper there is nothing to be named.
    if (wish.tries.empty() || !holds(paper, spot)) return {};
    const PixelBox box = boxOf(wish.tries.front(), wish.radius);
    return PlacedLabel{
        0, 0, moved(slidInto(paper, moved(box, spot.left, spot.top)), -spot.left, -spot.top), zoom};
  }

  /// Whether a label near by says the same.
  bool isSaidNear(const LabelWish& wish, double zoom) const {
    if (!wish.saying) return false;
    const auto said = said_.find(*wish.saying);
    if (said == said_.end()) return false;
    return std::any_of(said->second.begin(), said->second.end(), [&](std::size_t index) {
      const LabelWish& other = wishes_[index];
      return std::hypot(other.x - wish.x, other.y - wish.y) * zoom < kRepeatApart;
    });
  }

  const std::vector<LabelWish>& wishes_;
  const PixelBox& paper_;
  const std::vector<FixedMark>& marks_;
  std::vector<std::size_t> order_;  ///< wishes yet to be met
  std::vector<PlacedLabel> placed_;
  std::unordered_map<std::size_t, std::vector<std::size_t>>
      said_;  ///< wishes met, by what they say
};

}  // namespace

bool PixelBox::overlaps(const PixelBox& other) const {
  return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
}

std::vector<PlacedLabel> placeLabels(const std::vector<LabelWish>& wishes, const PixelBox& paper,
                                     const std::vector<FixedMark>& marks,
                                     const std::vector<double>& zooms) {
  Placement placement(wishes, paper, marks);
  for (const double zoom : zooms) placement.placeAt(zoom);
  return placement.take();
}

}  // namespace KorvaniTools
