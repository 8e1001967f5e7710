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

/// The text's box, seen from the wish's place.
PixelBox boxOf(const LabelTry& attempt, double radius) {
  const double offset = radius + kGap;
  const double slant = radius * 0.7 + 1;
  const double width = attempt.width;
  const double height = attempt.height;
  const PixelBox centred{-width / 2, -height / 2, width / 2, height / 2};
  switch (attempt.side) {
    case LabelSide::right:
      return moved(centred, offset + width / 2, 0);
    case LabelSide::left:
      return moved(centred, -offset - width / 2, 0);
    case LabelSide::below:
      return moved(centred, 0, offset + height / 2);
    case LabelSide::above:
      return moved(centred, 0, -offset - height / 2);
    case LabelSide::belowRight:
      return moved(centred, slant + width / 2, slant + height / 2);
    case LabelSide::aboveRight:
      return moved(centred, slant + width / 2, -slant - height / 2);
    case LabelSide::belowLeft:
      return moved(centred, -slant - width / 2, slant + height / 2);
    case LabelSide::aboveLeft:
      return moved(centred, -slant - width / 2, -slant - height / 2);
    case LabelSide::centre:
      break;
  }
  return centred;
}

/// What lies on the paper, found by where it is.
class BoxIndex {
 public:
  struct Entry {
    PixelBox box;
    std::optional<std::size_t> mark;  ///< absent for a label
    bool soft = false;
  };

  void add(const Entry& entry) {
    eachCell(entry.box, [&](std::uint64_t cell) {
      cells_[cell].push_back(entries_.size());
      return true;
    });
    entries_.push_back(entry);
  }

  /// Whether `wish` may have that box.
  bool isFree(const PixelBox& box, const LabelWish& wish) const {
    const auto disturbs = [&](std::size_t index) {
      const Entry& entry = entries_[index];
      const bool allowed = entry.mark && ((entry.soft && wish.insists) || entry.mark == wish.mark);
      return !allowed && entry.box.overlaps(box);
    };
    return eachCell(box, [&](std::uint64_t cell) {
      const auto found = cells_.find(cell);
      return found == cells_.end() ||
             std::none_of(found->second.begin(), found->second.end(), disturbs);
    });
  }

 private:
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
    BoxIndex taken;
    for (std::size_t i = 0; i < marks_.size(); ++i) {
      const FixedMark& mark = marks_[i];
      taken.add({moved(withPlace(mark.box), mark.x * zoom, mark.y * zoom), i, mark.soft});
    }
    for (const PlacedLabel& label : placed_) {
      const LabelWish& wish = wishes_[label.wish];
      taken.add({moved(withPlace(label.box), wish.x * zoom, wish.y * zoom), {}, false});
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
    for (std::size_t i = 0; i < wish.tries.size(); ++i) {
      const LabelTry& attempt = wish.tries[i];
      const PixelBox box = boxOf(attempt, wish.radius);
      const PixelBox text = moved(box, wish.x * zoom, wish.y * zoom);
      const PixelBox covered = moved(withPlace(box), wish.x * zoom, wish.y * zoom);
      const bool fits = holds(scaled(paper_, zoom), text) &&
                        (!attempt.within || holds(scaled(*attempt.within, zoom), text));
      if (!fits || !taken.isFree(covered, wish)) continue;
      taken.add({covered, {}, false});
      placed_.push_back({index, i, box, zoom});
      if (wish.saying) said_[*wish.saying].push_back(index);
      return true;
    }
    return false;
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
