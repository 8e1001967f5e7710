#pragma once

#include <vector>

#include "Building/Rectangle.hpp"

namespace KorvaniTools {

/// A point of a drawing in metres: `x` to the east, `y` to the south of the drawing's north-west
/// corner.
struct ScenePoint {
  double x = 0;
  double y = 0;
};

using SceneLine = std::vector<ScenePoint>;

/// How degrees become metres on the paper. All levels of a building share one frame, so that
/// they lie on top of each other.
///
///     const SceneFrame frame(rectangle, 4.0);
///     const ScenePoint door = frame.at(coordinate);  // also for places outside the rectangle
///
/// The plane touches the earth in the middle of the rectangle; within a campus lengths are true
/// to a thousandth. Every result is finite for finite degrees. A value; copy and read it from
/// any thread.
class SceneFrame {
 public:
  /// An empty frame around 0 degrees.
  SceneFrame() = default;

  /// A frame that shows `rectangle` with `margin` metres around it. An empty rectangle gives a
  /// frame of the margins alone.
  SceneFrame(const Rectangle& rectangle, double margin);

  ScenePoint at(Coordinate coordinate) const;
  SceneLine at(const std::vector<Coordinate>& coordinates) const;

  double width() const { return width_; }    ///< metres, above 0 with a margin
  double height() const { return height_; }  ///< metres, above 0 with a margin

 private:
  Coordinate northWest_{0, 0};
  double metresPerLongitude_ = 0;
  double margin_ = 0;
  double width_ = 0;
  double height_ = 0;
};

}  // namespace KorvaniTools
