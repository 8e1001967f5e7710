#include "Lint/WallIndex.hpp"

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace KorvaniTools {
namespace {

/// How far the boxes of walls and lines reach beyond them, in units of the map plane (decimetres;
/// 1.3 cm at its northern edge). More than rounding can move the place where two lines meet, and
/// more than a hundredth of a metre.
constexpr double kMargin = 1;

bool isWithinUnit(double fraction) { return 0 <= fraction && fraction <= 1; }

struct DestroyContext {
  void operator()(GEOSContextHandle_t context) const { GEOS_finish_r(context); }
};
using Context = std::unique_ptr<GEOSContextHandle_HS, DestroyContext>;

struct DestroyGeometry {
  GEOSContextHandle_t context = nullptr;
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
};
using Geometry = std::unique_ptr<GEOSGeometry, DestroyGeometry>;

struct DestroyTree {
  GEOSContextHandle_t context = nullptr;
  void operator()(GEOSSTRtree* tree) const { GEOSSTRtree_destroy_r(context, tree); }
};
using BoxTree = std::unique_ptr<GEOSSTRtree, DestroyTree>;

/// The library gives nothing only when it runs out of memory.
template <class T>
T* given(T* object) {
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

Geometry boxOf(GEOSContextHandle_t context, MapPoint a, MapPoint b) {
  const auto [west, east] = std::minmax(a.x, b.x);
  const auto [north, south] = std::minmax(a.y, b.y);
  return Geometry(given(GEOSGeom_createRectangle_r(context, west - kMargin, north - kMargin,
                                                   east + kMargin, south + kMargin)),
                  {context});
}

}  // namespace

std::optional<double> whereLineMeets(MapPoint a, MapPoint b, const WallPiece& wall) {
  const MapPoint p = wall.start;
  const MapPoint q = wall.end;
  const double denominator = (b.x - a.x) * (q.y - p.y) - (b.y - a.y) * (q.x - p.x);
  if (denominator == 0) return {};
  const double r = ((p.x - a.x) * (q.y - p.y) - (p.y - a.y) * (q.x - p.x)) / denominator;
  if (!isWithinUnit(r)) return {};
  const double s = ((b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y)) / denominator;
  if (!isWithinUnit(s)) return {};
  return r;
}

std::optional<double> whereLineRunsAlong(MapPoint a, MapPoint b, const WallPiece& wall,
                                         double apart) {
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  if (!(length > 0)) return {};
  const MapPoint along{(b.x - a.x) / length, (b.y - a.y) / length};
  const auto ahead = [&](MapPoint p) { return (p.x - a.x) * along.x + (p.y - a.y) * along.y; };
  const auto aside = [&](MapPoint p) { return (p.y - a.y) * along.x - (p.x - a.x) * along.y; };
  const double start = ahead(wall.start);
  const double end = ahead(wall.end);
  const double from = std::max(0.0, std::min(start, end));
  const double to = std::min(length, std::max(start, end));
  if (!(to - from > apart)) return {};
  const auto asideAt = [&](double way) {
    const double part = (way - start) / (end - start);
    return aside(wall.start) + part * (aside(wall.end) - aside(wall.start));
  };
  if (std::abs(asideAt(from)) > apart || std::abs(asideAt(to)) > apart) return {};
  return (from + to) / 2 / length;
}

/// The walls with a tree of their boxes.
class WallIndex::Tree {
 public:
  explicit Tree(std::vector<WallPiece> pieces) : pieces_(std::move(pieces)) {
    for (WallPiece& piece : pieces_) {
      boxes_.push_back(boxOf(context_.get(), piece.start, piece.end));
      GEOSSTRtree_insert_r(context_.get(), tree_.get(), boxes_.back().get(), &piece);
    }
  }

  const std::vector<WallPiece>& pieces() const { return pieces_; }

  /// Indexes of the walls whose boxes the line's touches, in no order.
  std::vector<std::size_t> near(MapPoint a, MapPoint b) const {
    Search search{pieces_.data(), {}};
    if (pieces_.empty()) return search.found;
    const Geometry box = boxOf(context_.get(), a, b);
    GEOSSTRtree_query_r(context_.get(), tree_.get(), box.get(), &Search::add, &search);
    return std::move(search.found);
  }

 private:
  struct Search {
    const WallPiece* first;
    std::vector<std::size_t> found;

    static void add(void* piece, void* search) {
      auto& self = *static_cast<Search*>(search);
      self.found.push_back(
          static_cast<std::size_t>(static_cast<const WallPiece*>(piece) - self.first));
    }
  };

  static constexpr std::size_t kNodeCapacity = 10;

  std::vector<WallPiece> pieces_;
  Context context_{given(GEOS_init_r())};
  std::vector<Geometry> boxes_;  // the tree refers to them
  BoxTree tree_{given(GEOSSTRtree_create_r(context_.get(), kNodeCapacity)), {context_.get()}};
};

WallIndex::WallIndex(std::vector<WallPiece> pieces)
    : tree_(std::make_unique<Tree>(std::move(pieces))) {}
WallIndex::~WallIndex() = default;
WallIndex::WallIndex(WallIndex&&) noexcept = default;
WallIndex& WallIndex::operator=(WallIndex&&) noexcept = default;

const std::vector<WallPiece>& WallIndex::pieces() const { return tree_->pieces(); }

std::vector<std::size_t> WallIndex::met(MapPoint a, MapPoint b) const {
  std::vector<std::size_t> walls = near(a, b);
  std::erase_if(walls, [&](std::size_t i) { return !whereLineMeets(a, b, pieces()[i]); });
  return walls;
}

std::vector<std::size_t> WallIndex::near(MapPoint a, MapPoint b) const {
  std::vector<std::size_t> walls = tree_->near(a, b);
  std::sort(walls.begin(), walls.end());
  return walls;
}

std::optional<std::size_t> WallIndex::anyMet(MapPoint a, MapPoint b) const {
  const std::vector<std::size_t> walls = tree_->near(a, b);
  const auto found = std::find_if(walls.begin(), walls.end(), [&](std::size_t i) {
    return whereLineMeets(a, b, pieces()[i]).has_value();
  });
  if (found == walls.end()) return {};
  return *found;
}

}  // namespace KorvaniTools
