#pragma once

/// The two configuration values that the graph's distances and proximity tests depend on.
///
/// The graph lies below the configuration, so it does not read it: it declares what it needs to
/// know as this role, and the module's facade answers with the main configuration's values. The
/// accessor is a seam of the linker; there is nothing to register and no order of initialisation
/// to mind.
///
/// Thread safety: both values may be read from any thread. They are read anew for every distance
/// and every proximity test, so that a change of the main configuration counts from the next one.

#include "Platform/Export.hpp"

namespace KorvaniNavigation {

class KORVANI_API GraphSettings {
 public:
  /// Height of one level in metres, part of every distance between two points.
  virtual double levelHeight() const = 0;

  /// Distance in metres under which a point counts as reached or near.
  virtual double targetProximityDistance() const = 0;

 protected:
  ~GraphSettings() = default;
};

/// The settings in force. The object lives as long as the process; a main configuration must
/// exist, a missing one is a fatal error of the facade.
KORVANI_API const GraphSettings& graphSettings();

}  // namespace KorvaniNavigation
