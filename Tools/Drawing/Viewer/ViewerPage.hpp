#pragma once

#include <optional>
#include <string>

#include "Drawing/Scene.hpp"
#include "Drawing/Viewer/Timeline.hpp"

namespace KorvaniTools {

struct ViewerOptions {
  bool graph = false;  ///< nodes and edges are shown from the start; the page can show them anyway
};

/// A page that shows a building: one HTML file that needs nothing else, neither network nor fonts,
/// scripts or pictures beside it.
///
///     writeOutput(viewerPage(scene), "building.html");
///     writeOutput(viewerPage(scene, makeTimeline(building, trace)), "walk.html");
///
/// The page has a switch for the levels, zooms and pans, names what the pointer or the keyboard
/// stands on, finds places and lists the route's instructions. With a timeline it plays the walk,
/// in place of the scene's route.
///
/// Whatever names in the building say, they cannot become markup or script. The page's own policy
/// forbids every other script, and all connections.
///
/// The same scene and timeline give the same page. Cost: that of `levelSvg` for each level.
std::string viewerPage(const Scene& scene, const std::optional<Timeline>& timeline = {},
                       const ViewerOptions& options = {});

}  // namespace KorvaniTools
