#pragma once

/// Internal. The last step of the import: who and what people look for.

#include "Import/Imdf/ImdfModel.hpp"

namespace KorvaniTools {

/// Reads addresses, anchors, occupants and amenities into `model`.
///
/// The only occupant of a unit that has no name, or the same, gives the unit its name and its
/// place; other occupants are places at their anchors. Amenities are places, named by their
/// category when they have no name, except for ways up and down.
void readImdfPlaces(ImdfModel& model);

}  // namespace KorvaniTools
