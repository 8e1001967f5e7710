#pragma once

#include <cstddef>
#include <string>

#include "Buildings/PlainBuilding.hpp"

namespace KorvaniBenchmarks {

/// The text of a building file, as the tools read it. Two edges that follow each other and differ
/// in direction only are one feature.
std::string buildingFileText(const PlainBuilding& building);

/// A building whose file has about that many features.
PlainBuilding makeOfficesOfFeatures(std::size_t features);

}  // namespace KorvaniBenchmarks
