#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace KorvaniTools {

/// A rectangle in pixels, x to the right and y down.
struct PixelBox {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
  /// Whether the two share more than a border.
  bool overlaps(const PixelBox& other) const;
};

/// Where a label's text stands beside what it names.
enum class LabelSide {
  centre,
  right,
  left,
  below,
  above,
  belowRight,
  aboveRight,
  belowLeft,
  aboveLeft,
};

/// A mark that keeps its size when the picture is magnified, such as a place's dot.
struct FixedMark {
  double x = 0;  ///< its place, pixels at magnification 1
  double y = 0;
  PixelBox box;       ///< what it covers, seen from its place
  bool soft = false;  ///< gives way first to labels that insist
};

/// One way to write a label.
struct LabelTry {
  LabelSide side = LabelSide::right;
  double width = 0;  ///< of the text, pixels
  double height = 0;
  /// What the text must stay within, pixels at magnification 1, such as a room; absent: the paper.
  std::optional<PixelBox> within = {};
};

/// Something that wants a label.
struct LabelWish {
  double x = 0;  ///< what is named, pixels at magnification 1
  double y = 0;
  double radius = 0;            ///< of the mark there: how far the text keeps off
  int priority = 0;             ///< larger ones get their place first; equal ones in their order
  std::vector<LabelTry> tries;  ///< the better ones first
  std::optional<std::size_t> mark;  ///< index of its own mark, which may be touched
  /// Is written in any case where its place is on the paper: on soft marks if there is no other
  /// room, then on hard ones, and at last on other labels.
  bool insists = false;
  /// Labels of the same number say the same; near one of them no other is needed.
  std::optional<std::size_t> saying = {};
};

/// A label that found room.
struct PlacedLabel {
  std::size_t wish = 0;     ///< index into the wishes
  std::size_t attempt = 0;  ///< index into the wish's tries
  PixelBox box;             ///< of the text, seen from the wish's place
  double zoom = 1;          ///< the magnification from which on it is shown
};

/// Labels that say the same keep so far apart, in pixels.
inline constexpr double kRepeatApart = 240;

/// Finds room for labels: no two overlap, none covers a mark of something else, none repeats what
/// stands near it, and those without room are left out. Only labels that insist may do otherwise.
/// A label whose place lies under marks of something else stands beside them.
///
/// Wishes are met in the order of their priority, and then in their own; the same wishes give the
/// same labels. When the picture is magnified, labels and marks keep their size while their
/// places move apart; labels that found room at one magnification stay, at all larger ones up to
/// 1000 too, and others join them.
/// @param paper what labels must lie on, pixels at magnification 1
/// @param zooms magnifications, ascending, at least 1 each
/// @return in the order in which they found room. Cost: near linear in the number of wishes
std::vector<PlacedLabel> placeLabels(const std::vector<LabelWish>& wishes, const PixelBox& paper,
                                     const std::vector<FixedMark>& marks,
                                     const std::vector<double>& zooms);

}  // namespace KorvaniTools
