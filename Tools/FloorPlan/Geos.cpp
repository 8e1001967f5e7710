#include "FloorPlan/Geos.hpp"

#include <algorithm>
#include <cmath>

namespace KorvaniTools {
namespace {

constexpr int kQuadrantSegments = 4;
constexpr double kMitreLimit = 2;
constexpr double kGrid = 0.01;  // metres

void keepMessage(const char* message, void* text) { *static_cast<std::string*>(text) = message; }
void forget(const char* /*message*/, void* /*unused*/) {}

bool finite(const GroundLine& positions) {
  return std::all_of(positions.begin(), positions.end(),
                     [](GroundPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

}  // namespace

Geos::Geos() : context_(GEOS_init_r()) {
  GEOSContext_setErrorMessageHandler_r(context_, keepMessage, &error_);
  GEOSContext_setNoticeMessageHandler_r(context_, forget, nullptr);
}

Geos::~Geos() { GEOS_finish_r(context_); }

Shape Geos::own(GEOSGeometry* geometry, const char* what) const {
  if (geometry == nullptr) throw GeosError(std::string(what) + ": " + error_);
  return Shape(geometry, ShapeDeleter{context_});
}

GEOSCoordSequence* Geos::sequence(const GroundLine& positions) const {
  std::vector<double> numbers;
  numbers.reserve(positions.size() * 2);
  for (const GroundPoint& p : positions) {
    numbers.push_back(p.x);
    numbers.push_back(p.y);
  }
  GEOSCoordSequence* sequence = GEOSCoordSeq_copyFromBuffer_r(
      context_, numbers.data(), static_cast<unsigned>(positions.size()), 0, 0);
  if (sequence == nullptr) throw GeosError("positions: " + error_);
  return sequence;
}

Shape Geos::point(GroundPoint at) const {
  return own(GEOSGeom_createPointFromXY_r(context_, at.x, at.y), "point");
}

Shape Geos::segment(GroundPoint a, GroundPoint b) const { return line({a, b}); }

Shape Geos::line(const GroundLine& line) const {
  if (line.size() < 2 || !finite(line)) return nullptr;
  return own(GEOSGeom_createLineString_r(context_, sequence(line)), "line");
}

Shape Geos::copy(const Shape& shape) const {
  return own(GEOSGeom_clone_r(context_, shape.get()), "copy");
}

Shape Geos::ring(GroundLine positions) const {
  if (positions.empty() || !finite(positions)) return nullptr;
  if (groundDistance(positions.front(), positions.back()) > 0) positions.push_back(positions[0]);
  if (positions.size() < 4) return nullptr;
  return own(GEOSGeom_createLinearRing_r(context_, sequence(positions)), "ring");
}

Geos::Polygon Geos::polygon(const std::vector<GroundLine>& rings) const {
  if (rings.empty()) return {};
  Shape outer = ring(rings.front());
  if (!outer) return {};
  std::vector<GEOSGeometry*> holes;
  for (std::size_t i = 1; i < rings.size(); ++i) {
    if (Shape hole = ring(rings[i])) holes.push_back(hole.release());
  }
  Shape drawn = own(GEOSGeom_createPolygon_r(context_, outer.release(), holes.data(),
                                             static_cast<unsigned>(holes.size())),
                    "polygon");
  Polygon result;
  if (GEOSisValid_r(context_, drawn.get()) != 1) {
    result.mended = true;
    drawn = own(GEOSMakeValid_r(context_, drawn.get()), "make valid");
  }
  drawn = polygonsOnly(drawn);
  if (!empty(drawn)) result.shape = std::move(drawn);
  return result;
}

Shape Geos::collection(int type, std::vector<Shape> shapes) const {
  std::vector<GEOSGeometry*> parts;
  for (Shape& shape : shapes) {
    if (shape) parts.push_back(shape.release());
  }
  return own(GEOSGeom_createCollection_r(context_, type, parts.data(),
                                         static_cast<unsigned>(parts.size())),
             "collection");
}

Shape Geos::polygonsOnly(const Shape& shape) const {
  return collection(GEOS_MULTIPOLYGON, polygonsOf(shape));
}

Shape Geos::gathered(const std::vector<Shape>& shapes) const {
  std::vector<Shape> polygons;
  for (const Shape& shape : shapes) {
    for (Shape& polygon : polygonsOf(shape)) polygons.push_back(std::move(polygon));
  }
  return collection(GEOS_MULTIPOLYGON, std::move(polygons));
}

Shape Geos::united(std::vector<Shape> shapes) const {
  const Shape all = collection(GEOS_GEOMETRYCOLLECTION, std::move(shapes));
  return own(GEOSUnaryUnion_r(context_, all.get()), "union");
}

Shape Geos::minus(const Shape& a, const Shape& b) const {
  return own(GEOSDifference_r(context_, a.get(), b.get()), "difference");
}

Shape Geos::common(const Shape& a, const Shape& b) const {
  return own(GEOSIntersection_r(context_, a.get(), b.get()), "intersection");
}

Shape Geos::grown(const Shape& shape, double metres) const {
  return own(GEOSBuffer_r(context_, shape.get(), metres, kQuadrantSegments), "buffer");
}

Shape Geos::grownSharp(const Shape& shape, double metres) const {
  return own(GEOSBufferWithStyle_r(context_, shape.get(), metres, kQuadrantSegments,
                                   GEOSBUF_CAP_FLAT, GEOSBUF_JOIN_MITRE, kMitreLimit),
             "buffer");
}

Shape Geos::simplified(const Shape& shape, double tolerance) const {
  return own(GEOSTopologyPreserveSimplify_r(context_, shape.get(), tolerance), "simplify");
}

Shape Geos::band(const Shape& line, double halfWidth) const { return grownSharp(line, halfWidth); }

double Geos::area(const Shape& shape) const {
  double result = 0;
  if (GEOSArea_r(context_, shape.get(), &result) != 1) throw GeosError("area: " + error_);
  return result;
}

double Geos::length(const Shape& shape) const {
  double result = 0;
  if (GEOSLength_r(context_, shape.get(), &result) != 1) throw GeosError("length: " + error_);
  return result;
}

bool Geos::empty(const Shape& shape) const {
  return !shape || GEOSisEmpty_r(context_, shape.get()) != 0;
}

double Geos::distance(const Shape& a, const Shape& b) const {
  double result = 0;
  if (GEOSDistance_r(context_, a.get(), b.get(), &result) != 1) {
    throw GeosError("distance: " + error_);
  }
  return result;
}

bool Geos::intersects(const Shape& a, const Shape& b) const {
  const char result = GEOSIntersects_r(context_, a.get(), b.get());
  if (result == 2) throw GeosError("intersects: " + error_);
  return result == 1;
}

std::optional<std::pair<GroundPoint, GroundPoint>> Geos::nearest(const Shape& a,
                                                                 const Shape& b) const {
  if (empty(a) || empty(b)) return std::nullopt;
  GEOSCoordSequence* points = GEOSNearestPoints_r(context_, a.get(), b.get());
  if (points == nullptr) return std::nullopt;
  double numbers[4];
  const int done = GEOSCoordSeq_copyToBuffer_r(context_, points, numbers, 0, 0);
  GEOSCoordSeq_destroy_r(context_, points);
  if (done != 1) throw GeosError("nearest points: " + error_);
  return {{{numbers[0], numbers[1]}, {numbers[2], numbers[3]}}};
}

std::optional<GroundPoint> Geos::innerPoint(const Shape& polygon) const {
  if (empty(polygon)) return std::nullopt;
  const double tolerance = std::max(0.05, std::sqrt(area(polygon)) / 100);
  // The result leads from the circle's middle to its rim; none for a shape without width.
  const Shape radius(GEOSMaximumInscribedCircle_r(context_, polygon.get(), tolerance),
                     ShapeDeleter{context_});
  if (radius && !empty(radius)) return positionsOf(radius.get()).front();
  const Shape inside = own(GEOSPointOnSurface_r(context_, polygon.get()), "point on surface");
  if (empty(inside)) return std::nullopt;
  return positionsOf(inside.get()).front();
}

std::vector<GroundLine> Geos::mergedLines(const std::vector<GroundLine>& lines,
                                          const Shape& without) const {
  std::vector<Shape> shapes;
  shapes.reserve(lines.size());
  for (const GroundLine& drawn : lines) shapes.push_back(line(drawn));
  const Shape all = collection(GEOS_GEOMETRYCOLLECTION, std::move(shapes));
  Shape noded = own(GEOSUnaryUnionPrec_r(context_, all.get(), kGrid), "union of lines");
  if (!empty(without)) noded = minus(noded, without);
  const Shape merged = own(GEOSLineMerge_r(context_, noded.get()), "line merge");
  return linesOf(merged);
}

std::vector<Shape> Geos::triangles(const Shape& polygon) const {
  return polygonsOf(
      own(GEOSConstrainedDelaunayTriangulation_r(context_, polygon.get()), "triangulation"));
}

template <typename Visit>
void Geos::visit(const GEOSGeometry* geometry, Visit visitOne) const {
  const int type = GEOSGeomTypeId_r(context_, geometry);
  if (type < GEOS_MULTIPOINT) return visitOne(geometry, type);
  const int count = GEOSGetNumGeometries_r(context_, geometry);
  for (int i = 0; i < count; ++i) visit(GEOSGetGeometryN_r(context_, geometry, i), visitOne);
}

std::vector<Shape> Geos::polygonsOf(const Shape& shape) const {
  std::vector<Shape> result;
  if (!shape) return result;
  visit(shape.get(), [&](const GEOSGeometry* part, int type) {
    if (type != GEOS_POLYGON || GEOSisEmpty_r(context_, part) != 0) return;
    result.push_back(own(GEOSGeom_clone_r(context_, part), "copy"));
  });
  return result;
}

std::vector<GroundLine> Geos::linesOf(const Shape& shape) const {
  std::vector<GroundLine> result;
  if (!shape) return result;
  visit(shape.get(), [&](const GEOSGeometry* part, int type) {
    if (type != GEOS_LINESTRING && type != GEOS_LINEARRING) return;
    GroundLine line = positionsOf(part);
    if (line.size() >= 2) result.push_back(std::move(line));
  });
  return result;
}

std::vector<GroundPoint> Geos::pointsOf(const Shape& shape) const {
  std::vector<GroundPoint> result;
  if (!shape) return result;
  visit(shape.get(), [&](const GEOSGeometry* part, int type) {
    if (type != GEOS_POINT) return;
    const GroundLine at = positionsOf(part);
    result.insert(result.end(), at.begin(), at.end());
  });
  return result;
}

std::vector<GroundLine> Geos::ringsOf(const Shape& polygon) const {
  std::vector<GroundLine> rings;
  rings.push_back(positionsOf(GEOSGetExteriorRing_r(context_, polygon.get())));
  const int holes = GEOSGetNumInteriorRings_r(context_, polygon.get());
  for (int i = 0; i < holes; ++i) {
    rings.push_back(positionsOf(GEOSGetInteriorRingN_r(context_, polygon.get(), i)));
  }
  return rings;
}

GroundLine Geos::positionsOf(const GEOSGeometry* geometry) const {
  const GEOSCoordSequence* sequence = GEOSGeom_getCoordSeq_r(context_, geometry);
  unsigned count = 0;
  if (sequence == nullptr || GEOSCoordSeq_getSize_r(context_, sequence, &count) != 1) return {};
  std::vector<double> numbers(std::size_t{count} * 2);
  if (count > 0 && GEOSCoordSeq_copyToBuffer_r(context_, sequence, numbers.data(), 0, 0) != 1) {
    throw GeosError("positions: " + error_);
  }
  GroundLine line(count);
  for (std::size_t i = 0; i < count; ++i) line[i] = {numbers[2 * i], numbers[2 * i + 1]};
  return line;
}

PreparedShape::PreparedShape(const Geos& geos, Shape shape)
    : geos_(&geos),
      shape_(std::move(shape)),
      prepared_(GEOSPrepare_r(geos.context(), shape_.get())) {
  if (prepared_ == nullptr) throw GeosError("a shape could not be prepared");
}

PreparedShape::PreparedShape(PreparedShape&& other) noexcept
    : geos_(other.geos_),
      shape_(std::move(other.shape_)),
      prepared_(std::exchange(other.prepared_, nullptr)) {}

PreparedShape::~PreparedShape() {
  if (prepared_ != nullptr) GEOSPreparedGeom_destroy_r(geos_->context(), prepared_);
}

bool PreparedShape::covers(const Shape& other) const {
  return GEOSPreparedCovers_r(geos_->context(), prepared_, other.get()) == 1;
}

bool PreparedShape::intersects(const Shape& other) const {
  return GEOSPreparedIntersects_r(geos_->context(), prepared_, other.get()) == 1;
}

bool PreparedShape::isWithin(double distance, const Shape& other) const {
  return GEOSPreparedDistanceWithin_r(geos_->context(), prepared_, other.get(), distance) == 1;
}

BoxIndex::BoxIndex(const Geos& geos)
    : geos_(&geos), tree_(GEOSSTRtree_create_r(geos.context(), 10)) {
  if (tree_ == nullptr) throw GeosError("an index could not be made");
}

BoxIndex::~BoxIndex() { GEOSSTRtree_destroy_r(geos_->context(), tree_); }

void BoxIndex::insert(std::size_t thing, GroundPoint a, GroundPoint b) {
  boxes_.push_back(geos_->segment(a, b));
  things_.push_back(std::make_unique<std::size_t>(thing));
  GEOSSTRtree_insert_r(geos_->context(), tree_, boxes_.back().get(), things_.back().get());
}

void BoxIndex::insert(std::size_t thing, const GroundLine& line) {
  const BoundingBox box = boxOf(line);
  insert(thing, box.low, box.high);
}

std::vector<std::size_t> BoxIndex::near(GroundPoint a, GroundPoint b, double margin) const {
  std::vector<std::size_t> found;
  if (things_.empty()) return found;
  const Shape box = geos_->segment({std::min(a.x, b.x) - margin, std::min(a.y, b.y) - margin},
                                   {std::max(a.x, b.x) + margin, std::max(a.y, b.y) + margin});
  const auto keep = [](void* thing, void* list) {
    static_cast<std::vector<std::size_t>*>(list)->push_back(*static_cast<std::size_t*>(thing));
  };
  GEOSSTRtree_query_r(geos_->context(), tree_, box.get(), keep, &found);
  std::sort(found.begin(), found.end());
  return found;
}

}  // namespace KorvaniTools
