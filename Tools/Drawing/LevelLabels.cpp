#include "Drawing/LevelLabels.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "Drawing/MarkSvg.hpp"
#include "Drawing/RoomSpot.hpp"
#include "Drawing/RouteSvg.hpp"
#include "Drawing/TextWidth.hpp"

namespace KorvaniTools {
namespace {

constexpr double kLongestLine = 130;  // pixels
constexpr double kLongestBadge = 220;
constexpr double kRoomPadding = 2;  // pixels between a room's walls and names
constexpr double kBadgePadding = 7;
constexpr double kAlongRoute = 14;    // pixels between the places that labels keep off
constexpr double kMostPieces = 2000;  // of a line; one that needs more leads off the paper
constexpr double kRouteHalf = 5;

const std::vector<LabelSide> kAround{
    LabelSide::right,      LabelSide::left,       LabelSide::below,     LabelSide::above,
    LabelSide::belowRight, LabelSide::aboveRight, LabelSide::belowLeft, LabelSide::aboveLeft};
const std::vector<LabelSide> kBelowFirst{
    LabelSide::below,      LabelSide::above,     LabelSide::right,      LabelSide::left,
    LabelSide::belowRight, LabelSide::belowLeft, LabelSide::aboveRight, LabelSide::aboveLeft};

int priorityOf(const ScenePlace& place) {
  if (place.entrance) return 60;
  switch (place.kind) {
    case RoomKind::waiting:
      return 50;
    case RoomKind::toilet:
    case RoomKind::service:
    case RoomKind::food:
      return 40;
    case RoomKind::shop:
      return 35;
    case RoomKind::stairs:
    case RoomKind::elevator:
      return 10;
    default:
      return 30;
  }
}

PixelBox around(double half) { return {-half, -half, half, half}; }

bool holds(const SceneLine& ring, ScenePoint point) {
  bool inside = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const ScenePoint& a = ring[i];
    const ScenePoint& b = ring[(i + 1) % ring.size()];
    if ((a.y <= point.y) == (b.y <= point.y)) continue;
    if (a.x + (b.x - a.x) * ((point.y - a.y) / (b.y - a.y)) > point.x) inside = !inside;
  }
  return inside;
}

/// The text in at most `most` lines; what is too long is cut.
std::vector<std::string> linesOf(const std::string& text, LabelKind kind, double pixels,
                                 std::size_t most) {
  const double size = fontSizeOf(kind);
  const bool bold = kind == LabelKind::end;
  std::vector<std::string> lines = wrapped(text, size, bold, pixels);
  if (lines.size() <= most) return lines;
  std::string rest = lines[most - 1];
  for (std::size_t i = most; i < lines.size(); ++i) rest += ' ' + lines[i];
  lines.resize(most - 1);
  lines.push_back(shortened(rest, size, bold, pixels));
  return lines;
}

/// Where the route changes the level and has marks of its own.
std::vector<ScenePoint> routeChanges(const Scene& scene, const SceneLevel& level) {
  std::vector<ScenePoint> places;
  if (!scene.route) return places;
  for (const RouteChange& change : scene.route->changes) {
    if (change.from == level.level) places.push_back(change.leaves);
    if (change.to == level.level) places.push_back(change.arrives);
  }
  return places;
}

bool isWhole(const std::vector<std::string>& lines, const std::string& text) {
  std::string joined;
  for (const std::string& line : lines) joined += (joined.empty() ? "" : " ") + line;
  return joined == text;
}

/// A label to be placed: its wish, and the lines of each try.
struct Candidate {
  LabelWish wish;
  LevelLabel label;
  std::vector<std::vector<std::string>> lines;

  void add(LabelSide side, const std::vector<std::string>& text,
           const std::optional<PixelBox>& within = {}) {
    LabelTry attempt;
    attempt.side = side;
    attempt.within = within;
    for (const std::string& line : text) {
      const double width = textWidth(line, fontSizeOf(label.kind), label.kind == LabelKind::end);
      attempt.width = std::max(attempt.width, width + 2);
    }
    attempt.height = lineHeightOf(label.kind) * static_cast<double>(text.size());
    if (label.kind == LabelKind::badge) {
      attempt.width = textWidth(text.front(), fontSizeOf(label.kind), true) + 2 * kBadgePadding;
      attempt.height += 6;
    }
    wish.tries.push_back(attempt);
    lines.push_back(text);
  }

  void add(const std::vector<LabelSide>& sides, const std::vector<std::string>& text) {
    for (const LabelSide side : sides) add(side, text);
  }
};

/// Collects what is to be written on a level.
class WishList {
 public:
  WishList(const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options)
      : scene_(scene), level_(level), options_(options), scale_(options.pixelsPerMetre) {
    for (const SceneRoom& room : level.rooms) {
      const double far = std::numeric_limits<double>::infinity();
      PixelBox box{far, far, -far, -far};
      for (const ScenePoint& point : room.rings.front()) {
        box.left = std::min(box.left, point.x * scale_ + kRoomPadding);
        box.top = std::min(box.top, point.y * scale_ + kRoomPadding);
        box.right = std::max(box.right, point.x * scale_ - kRoomPadding);
        box.bottom = std::max(box.bottom, point.y * scale_ - kRoomPadding);
      }
      boxes_.push_back(box);
    }
  }

  std::vector<LevelLabel> place() {
    if (options_.route && scene_.route) addRoute(*scene_.route);
    for (const auto& marked : markedConnections(scene_, level_, options_)) {
      if (marked.second == 1) addMark(marked.first->at, around(kConnectionHalf), true);
    }
    for (const ScenePlace& each : level_.places) addPlace(each);
    for (const SceneRoom& room : level_.rooms) addRoom(room);
    const PixelBox paper = paperBox();
    std::vector<LabelWish> wishes;
    for (const Candidate& candidate : candidates_) wishes.push_back(candidate.wish);
    std::vector<LevelLabel> found;
    for (const PlacedLabel& placed : placeLabels(wishes, paper, marks_, options_.labelZooms)) {
      Candidate& candidate = candidates_[placed.wish];
      candidate.label.lines = candidate.lines[placed.attempt];
      candidate.label.side = candidate.wish.tries[placed.attempt].side;
      candidate.label.box = placed.box;
      candidate.label.zoom = placed.zoom;
      found.push_back(std::move(candidate.label));
    }
    return found;
  }

 private:
  ScenePoint scaled(ScenePoint point) const { return {point.x * scale_, point.y * scale_}; }

  PixelBox paperBox() const {
    const SceneWindow whole{0, 0, scene_.frame.width(), scene_.frame.height()};
    const SceneWindow window = options_.window.value_or(whole);
    return {window.left * scale_, window.top * scale_, (window.left + window.width) * scale_,
            (window.top + window.height) * scale_};
  }

  std::size_t addMark(ScenePoint at, const PixelBox& box, bool soft) {
    marks_.push_back({at.x * scale_, at.y * scale_, box, soft});
    return marks_.size() - 1;
  }

  /// A label without tries.
  Candidate& newCandidate(LabelKind kind, ScenePoint at, double radius, int priority) {
    Candidate candidate;
    candidate.label.kind = kind;
    candidate.label.at = scaled(at);
    candidate.wish.x = candidate.label.at.x;
    candidate.wish.y = candidate.label.at.y;
    candidate.wish.radius = radius;
    candidate.wish.priority = priority;
    candidates_.push_back(std::move(candidate));
    return candidates_.back();
  }

  void addRoute(const DrawnRoute& route) {
    addEnd(route.destination, {-kPinHalf, -kPinHeight, kPinHalf, 2}, 1000);
    const double start = startsWithChange(route) ? kStartRadiusAroundDisc : kStartRadius;
    addEnd(route.start, around(start), 990);
    for (const RouteChange& change : route.changes) addChange(change);
    for (const RouteArrow& arrow : route.arrows) {
      if (arrow.level == level_.level) addMark(arrow.at, around(kArrowRadius), true);
    }
    for (const RouteLeg& leg : route.legs) {
      if (leg.level == level_.level) keepOff(leg.line);
    }
  }

  void addEnd(const RouteEnd& end, const PixelBox& box, int priority) {
    if (end.level != level_.level) return;
    addMark(end.at, box, false);
    if (end.name.empty()) return;
    Candidate& candidate = newCandidate(LabelKind::end, end.at, kPinHalf, priority);
    candidate.wish.insists = true;
    candidate.add(kAround, linesOf(end.name, LabelKind::end, kLongestLine, 2));
  }

  void addChange(const RouteChange& change) {
    if (change.from == level_.level) {
      addBadge(change.leaves, change.toName, kDiscRadius, 900);
    } else if (change.to == level_.level) {
      addBadge(change.arrives, change.fromName, kDiscRadius, 800);
    }
  }

  void addBadge(ScenePoint at, const std::string& text, double radius, int priority) {
    const std::size_t mark = addMark(at, around(radius), false);
    Candidate& candidate = newCandidate(LabelKind::badge, at, radius, priority);
    candidate.wish.mark = mark;
    candidate.wish.insists = true;
    candidate.add(kAround, {shortened(text, fontSizeOf(LabelKind::badge), true, kLongestBadge)});
  }

  /// Marks along the route, so that names stand beside it.
  void keepOff(const SceneLine& line) {
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
      const double dx = line[i + 1].x - line[i].x;
      const double dy = line[i + 1].y - line[i].y;
      const double pieces = std::ceil(std::hypot(dx, dy) * scale_ / kAlongRoute);
      const int parts = static_cast<int>(std::min(pieces, kMostPieces));
      for (int step = 0; step < parts; ++step) {
        const double part = static_cast<double>(step) / parts;
        addMark({line[i].x + dx * part, line[i].y + dy * part}, around(kRouteHalf), true);
      }
    }
  }

  void addPlace(const ScenePlace& each) {
    const double radius = each.entrance ? kEntranceRadius : kDotRadius;
    if (options_.route && isEndOfRoute(scene_, level_, each)) return;
    const std::size_t mark = addMark(each.at, around(radius), true);
    if (each.name.empty()) return;
    Candidate& candidate = newCandidate(LabelKind::place, each.at, radius, priorityOf(each));
    candidate.wish.mark = mark;
    candidate.wish.saying = sayings_.emplace(each.name, sayings_.size()).first->second;
    if (!each.entrance) addTriesInRoom(candidate, each);
    candidate.add(each.entrance ? kAround : kBelowFirst,
                  linesOf(each.name, LabelKind::place, kLongestLine, 2));
  }

  /// Above all, a name belongs into the room of its place, in several lines if need be.
  void addTriesInRoom(Candidate& candidate, const ScenePlace& each) {
    const PixelBox* room = roomAround(each.at);
    if (room == nullptr) return;
    for (const double part : {1.0, 0.6}) {
      const auto lines = linesOf(each.name, LabelKind::place, room->width() * part, 3);
      if (!isWhole(lines, each.name)) continue;
      candidate.add(LabelSide::below, lines, *room);
      candidate.add(LabelSide::above, lines, *room);
      candidate.add(LabelSide::right, lines, *room);
      candidate.add(LabelSide::left, lines, *room);
    }
  }

  /// The rectangle of the smallest room around the place, in pixels; null when it is in none.
  const PixelBox* roomAround(ScenePoint at) const {
    const PixelBox* smallest = nullptr;
    for (std::size_t i = 0; i < level_.rooms.size(); ++i) {
      const PixelBox& box = boxes_[i];
      const double x = at.x * scale_;
      const double y = at.y * scale_;
      if (x < box.left || x > box.right || y < box.top || y > box.bottom) continue;
      if (!holds(level_.rooms[i].rings.front(), at)) continue;
      const double size = box.width() * box.height();
      if (smallest == nullptr || size < smallest->width() * smallest->height()) smallest = &box;
    }
    return smallest;
  }

  /// Whether a place of that name, or any toilet for a nameless one, lies in the room.
  bool isNamedByPlace(const SceneRoom& room) const {
    return std::any_of(level_.places.begin(), level_.places.end(), [&](const ScenePlace& each) {
      const bool same = room.name.empty() ? each.kind == RoomKind::toilet : each.name == room.name;
      return same && holds(room.rings.front(), each.at);
    });
  }

  void addRoom(const SceneRoom& room) {
    const bool toilet = room.kind == RoomKind::toilet;
    if ((room.name.empty() && !toilet) || isNamedByPlace(room)) return;
    const RoomSpot spot = roomSpotOf(room.rings);
    if (spot.width <= 0) return;
    const std::string text = room.name.empty() ? "WC" : room.name;
    const PixelBox box{(spot.at.x - spot.width / 2) * scale_, spot.top * scale_,
                       (spot.at.x + spot.width / 2) * scale_, spot.bottom * scale_};
    Candidate& candidate = newCandidate(LabelKind::room, spot.at, 0, 20);
    for (const double part : {1.0, 0.6}) {
      const auto lines = linesOf(text, LabelKind::room, box.width() * part, 3);
      if (isWhole(lines, text)) candidate.add(LabelSide::centre, lines, box);
    }
    // For larger magnifications.
    candidate.add(LabelSide::centre, linesOf(text, LabelKind::room, kLongestLine, 2), box);
  }

  const Scene& scene_;
  const SceneLevel& level_;
  const LevelSvgOptions& options_;
  const double scale_;
  std::vector<FixedMark> marks_;
  std::vector<Candidate> candidates_;
  std::map<std::string, std::size_t> sayings_;  ///< the names of places, numbered
  std::vector<PixelBox> boxes_;                 ///< of the rooms, pixels
};

}  // namespace

std::vector<LevelLabel> levelLabels(const Scene& scene, const SceneLevel& level,
                                    const LevelSvgOptions& options) {
  return WishList(scene, level, options).place();
}

double fontSizeOf(LabelKind kind) {
  switch (kind) {
    case LabelKind::place:
      return 11.5;
    case LabelKind::room:
      return 11;
    case LabelKind::end:
      return 13;
    case LabelKind::badge:
      break;
  }
  return 12;
}

double lineHeightOf(LabelKind kind) { return fontSizeOf(kind) + 2.5; }

bool isEndOfRoute(const Scene& scene, const SceneLevel& level, const ScenePlace& place) {
  if (!scene.route) return false;
  const auto is = [&](const RouteEnd& end) {
    return end.level == level.level && end.name == place.name &&
           std::hypot(end.at.x - place.at.x, end.at.y - place.at.y) < 0.1;
  };
  return is(scene.route->start) || is(scene.route->destination);
}

std::vector<std::pair<const SceneConnection*, double>> markedConnections(
    const Scene& scene, const SceneLevel& level, const LevelSvgOptions& options) {
  constexpr double kBadgesApart = kConnectionHalf + kDiscRadius;
  const double largest = options.labelZooms.empty() ? 1 : options.labelZooms.back();
  std::vector<ScenePoint> taken;
  if (options.route) taken = routeChanges(scene, level);
  std::vector<std::pair<const SceneConnection*, double>> marked;
  for (const SceneConnection& connection : level.connections) {
    double zoom = 1;
    for (const ScenePoint& other : taken) {
      const double distance =
          std::max(std::abs(connection.at.x - other.x), std::abs(connection.at.y - other.y));
      zoom = std::max(zoom, kBadgesApart / (distance * options.pixelsPerMetre));
      if (zoom > largest) break;
    }
    if (zoom > largest) continue;
    marked.emplace_back(&connection, zoom);
    taken.push_back(connection.at);
  }
  return marked;
}

}  // namespace KorvaniTools
