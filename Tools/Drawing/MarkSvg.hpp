#pragma once

/// Internal. The marks of a plan, each drawn around its place and of the same size at every
/// magnification.

#include <optional>
#include <string>

#include "Drawing/RoomKind.hpp"
#include "Drawing/Scene.hpp"
#include "Drawing/SvgWriter.hpp"

namespace KorvaniTools {

/// Opens a mark's two groups at that place in pixels; whoever calls it closes both.
/// @param zoom the magnification from which on it is shown; 1: always
void openMark(SvgWriter& svg, ScenePoint at, std::string_view classes,
              SvgWriter::Attributes data = {}, double zoom = 1);
void closeMark(SvgWriter& svg);

/// The picture of a connection within 14 by 14 pixels around the origin.
void writeGlyph(SvgWriter& svg, ConnectionSymbol symbol);

inline constexpr double kConnectionHalf = 8.5;  ///< half the side of a connection's mark

void writeConnection(SvgWriter& svg, const SceneConnection& connection, ScenePoint at, double zoom);

inline constexpr double kDotRadius = 3.6;
inline constexpr double kEntranceRadius = 6;

void writePlace(SvgWriter& svg, const ScenePlace& place, ScenePoint at);

inline constexpr double kArrowRadius = 8;

inline constexpr double kDiscRadius = 11;

/// The arrow of an instruction: its point is at `at`, or beyond a disc that stands there already.
/// Level changes get a disc with their kind instead.
void writeArrow(SvgWriter& svg, const RouteArrow& arrow, ScenePoint at, bool besideDisc);

/// The disc where a route changes the level. `arriving`: where it comes from another one.
void writeChange(SvgWriter& svg, const RouteChange& change, ScenePoint at, bool arriving);

inline constexpr double kStartRadius = 9;
inline constexpr double kStartRadiusAroundDisc = 17;

/// @param aroundDisc a disc that stands there is to show within the ring
void writeStart(SvgWriter& svg, const RouteEnd& end, ScenePoint at, bool aroundDisc);

inline constexpr double kPinHalf = 11;
inline constexpr double kPinHeight = 30;

void writeDestination(SvgWriter& svg, const RouteEnd& end, ScenePoint at);

}  // namespace KorvaniTools
