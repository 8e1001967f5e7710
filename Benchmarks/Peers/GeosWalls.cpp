#include "Peers/GeosWalls.hpp"

#include <geos_c.h>

#include <cstddef>
#include <type_traits>

namespace KorvaniBenchmarks {

namespace {

static_assert(sizeof(PlanePoint) == 2 * sizeof(double) && std::is_standard_layout_v<PlanePoint>);

/// A line's coordinates in the order in which GEOS reads them.
GEOSGeometry* lineOf(GEOSContextHandle_t geos, const PlanePoint* points, std::size_t count) {
  return GEOSGeom_createLineString_r(
      geos, GEOSCoordSeq_copyFromBuffer_r(geos, &points->x, static_cast<unsigned>(count), 0, 0));
}

GEOSGeometry* collected(GEOSContextHandle_t geos, const PlaneLines& lines) {
  std::vector<GEOSGeometry*> parts;
  parts.reserve(lines.size());
  for (const auto& line : lines) parts.push_back(lineOf(geos, line.data(), line.size()));
  return GEOSGeom_createCollection_r(geos, GEOS_MULTILINESTRING, parts.data(),
                                     static_cast<unsigned>(parts.size()));
}

}  // namespace

struct GeosWalls::Prepared {
  GEOSContextHandle_t geos = GEOS_init_r();
  GEOSGeometry* walls;
  const GEOSPreparedGeometry* prepared;

  explicit Prepared(const PlaneLines& lines)
      : walls(collected(geos, lines)), prepared(GEOSPrepare_r(geos, walls)) {}

  ~Prepared() {
    GEOSPreparedGeom_destroy_r(geos, prepared);
    GEOSGeom_destroy_r(geos, walls);
    GEOS_finish_r(geos);
  }

  Prepared(const Prepared&) = delete;
  Prepared& operator=(const Prepared&) = delete;
};

GeosWalls::GeosWalls(const PlaneLines& walls) : prepared_(std::make_unique<Prepared>(walls)) {
  if (!walls.empty()) meet({walls[0][0], walls[0][1]});
}

GeosWalls::~GeosWalls() = default;

bool GeosWalls::meet(const PlaneSegment& line) const {
  GEOSContextHandle_t geos = prepared_->geos;
  GEOSGeometry* asked = lineOf(geos, &line.a, 2);
  const char met = GEOSPreparedIntersects_r(geos, prepared_->prepared, asked);
  GEOSGeom_destroy_r(geos, asked);
  return met == 1;
}

}  // namespace KorvaniBenchmarks
