#pragma once

/// Internal. The third step of the import: openings are doors.

#include "Import/Imdf/ImdfModel.hpp"
#include "Import/Imdf/ImdfShapes.hpp"

namespace KorvaniTools {

/// Reads openings into `model`.
///
/// An opening leads outdoors when it is a building's principal one, or when it lies on the outline
/// of its level and of exactly one unit there. Emergency exits are doors that nobody is sent
/// through; those for cars, bicycles and deliveries are no entrances for visitors.
void readImdfOpenings(ImdfModel& model, const ImdfShapes& shapes);

}  // namespace KorvaniTools
