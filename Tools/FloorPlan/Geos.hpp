#pragma once

/// Internal. Polygons and lines on the floor, by the GEOS library's reentrant C functions.
///
///     Geos geos;
///     const Shape hall = geos.polygon(rings).shape;
///     const Shape free = geos.minus(hall, geos.united(std::move(rooms)));
///     const PreparedShape prepared(geos, free);
///     if (prepared.covers(geos.segment(a, b))) { ... }
///
/// An operation that GEOS cannot carry out throws `GeosError`; what does not exist (the inner
/// point of nothing) is an empty `Shape`. One `Geos` and its shapes belong to one thread; a
/// `Geos` must outlive its shapes.

#define GEOS_USE_ONLY_R_API
#include <geos_c.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "FloorPlan/LocalFrame.hpp"

namespace KorvaniTools {

class GeosError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Frees a geometry; knows the context it was made in.
struct ShapeDeleter {
  GEOSContextHandle_t context = nullptr;
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
};

/// A geometry of any kind; null stands for nothing at all.
using Shape = std::unique_ptr<GEOSGeometry, ShapeDeleter>;

class Geos {
 public:
  Geos();
  ~Geos();
  Geos(const Geos&) = delete;
  Geos& operator=(const Geos&) = delete;

  GEOSContextHandle_t context() const { return context_; }

  struct Polygon {
    Shape shape;          ///< polygons only; null when nothing is left
    bool mended = false;  ///< the rings crossed themselves or each other
  };

  /// The polygon between the first ring and the others. Rings need not be closed.
  Polygon polygon(const std::vector<GroundLine>& rings) const;
  Shape point(GroundPoint at) const;
  Shape segment(GroundPoint a, GroundPoint b) const;
  Shape line(const GroundLine& line) const;  ///< null for fewer than two positions
  Shape copy(const Shape& shape) const;

  /// The polygons of all, side by side, even where they overlap: good for `intersects` only, and
  /// much cheaper than a union.
  Shape gathered(const std::vector<Shape>& shapes) const;
  Shape united(std::vector<Shape> shapes) const;  ///< an empty collection for none
  Shape minus(const Shape& a, const Shape& b) const;
  Shape common(const Shape& a, const Shape& b) const;
  Shape grown(const Shape& shape, double metres) const;       ///< round corners; shrunk below 0
  Shape grownSharp(const Shape& shape, double metres) const;  ///< mitred corners
  /// With fewer corners; moves by `tolerance` metres at the most.
  Shape simplified(const Shape& shape, double tolerance) const;
  Shape band(const Shape& line, double halfWidth) const;  ///< ends where the line ends

  double area(const Shape& shape) const;
  double length(const Shape& shape) const;
  bool empty(const Shape& shape) const;
  double distance(const Shape& a, const Shape& b) const;
  bool intersects(const Shape& a, const Shape& b) const;
  /// The nearest points of the two; absent when one is empty.
  std::optional<std::pair<GroundPoint, GroundPoint>> nearest(const Shape& a, const Shape& b) const;
  /// The point of a polygon that is farthest from its outline, or any point inside it.
  std::optional<GroundPoint> innerPoint(const Shape& polygon) const;

  /// Lines noded on a grid of 1 cm, each piece once, without what lies in `without`; pieces are put
  /// together again.
  std::vector<GroundLine> mergedLines(const std::vector<GroundLine>& lines,
                                      const Shape& without) const;
  /// Triangles that fill the polygon, with its corners only.
  std::vector<Shape> triangles(const Shape& polygon) const;

  std::vector<Shape> polygonsOf(const Shape& shape) const;
  std::vector<GroundLine> ringsOf(const Shape& polygon) const;  ///< the outer one first
  std::vector<GroundLine> linesOf(const Shape& shape) const;
  std::vector<GroundPoint> pointsOf(const Shape& shape) const;  ///< of single points only

 private:
  Shape own(GEOSGeometry* geometry, const char* what) const;
  Shape ring(GroundLine positions) const;
  Shape collection(int type, std::vector<Shape> shapes) const;
  Shape polygonsOnly(const Shape& shape) const;
  GEOSCoordSequence* sequence(const GroundLine& positions) const;
  GroundLine positionsOf(const GEOSGeometry* geometry) const;
  template <typename Visit>
  void visit(const GEOSGeometry* geometry, Visit visit) const;

  GEOSContextHandle_t context_;
  mutable std::string error_;
};

/// A shape made ready for many questions.
class PreparedShape {
 public:
  PreparedShape(const Geos& geos, Shape shape);
  ~PreparedShape();
  PreparedShape(PreparedShape&& other) noexcept;
  PreparedShape& operator=(PreparedShape&&) = delete;

  const Shape& shape() const { return shape_; }
  bool covers(const Shape& other) const;
  bool intersects(const Shape& other) const;
  /// Whether the two come as near to each other as that, in metres.
  bool isWithin(double distance, const Shape& other) const;

 private:
  const Geos* geos_;
  Shape shape_;
  const GEOSPreparedGeometry* prepared_ = nullptr;
};

/// Finds things by the boxes around them.
class BoxIndex {
 public:
  explicit BoxIndex(const Geos& geos);
  ~BoxIndex();
  BoxIndex(const BoxIndex&) = delete;
  BoxIndex& operator=(const BoxIndex&) = delete;

  /// All insertions come before the first question.
  void insert(std::size_t thing, GroundPoint a, GroundPoint b);
  void insert(std::size_t thing, const GroundLine& line);

  /// Things whose box touches the one around `a` and `b`, grown by `margin`; ascending.
  std::vector<std::size_t> near(GroundPoint a, GroundPoint b, double margin) const;

 private:
  const Geos* geos_;
  GEOSSTRtree* tree_;
  std::vector<Shape> boxes_;
  std::vector<std::unique_ptr<std::size_t>> things_;
};

}  // namespace KorvaniTools
