#pragma once

/// Internal. What people call features, and what else they want to know of them.

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "Import/Osm/OsmTags.hpp"

namespace KorvaniTools {

/// What a platform without a name is called by its number: "Platform 1", "Platform 3/4". Absent for
/// what is no platform or has none.
std::optional<std::string> platformName(const OsmTags& tags);

/// The name, or else the reference number: "Aula", "E017". Absent when there is neither.
std::optional<std::string> ownName(const OsmTags& tags);

/// What a shop, toilets and the like are called: by their own name, or else by what they are
/// ("Toilets", "Ticket machine"). Absent for what nobody goes to.
std::optional<std::string> amenityName(const OsmTags& tags);

/// "Main entrance", "Entrance 12", or the entrance's own name.
std::string entranceName(const OsmTags& tags);

/// What kind of room it is: "toilets", "shop", "office". Absent when the tags do not tell.
std::optional<std::string> categoryOf(const OsmTags& tags);

/// A place's further properties: its `source` and the tags that people ask for.
nlohmann::json furtherOf(const std::string& source, const OsmTags& tags);

}  // namespace KorvaniTools
