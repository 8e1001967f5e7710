#include "Import/Osm/OsmNames.hpp"

#include <algorithm>

#include "Import/Osm/OsmRoles.hpp"
#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

/// "fast_food;cafe" as people say it: "Fast food".
std::string spoken(std::string_view value) {
  if (value == "atm") return "ATM";
  std::string text(value.substr(0, value.find(';')));
  std::replace(text.begin(), text.end(), '_', ' ');
  if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
    text[0] = static_cast<char>(text[0] - 'a' + 'A');
  }
  return text;
}

/// Rooms that people look for, even when they bear no name.
bool isSoughtRoom(const OsmTags& tags) {
  return tags.is("room", {"toilets", "toilet", "shop", "restaurant", "cafe", "reception",
                          "auditorium", "ticket_office", "waiting_room"});
}

}  // namespace

std::optional<std::string> platformName(const OsmTags& tags) {
  if (!isPlatform(tags) || tags.has("name") || !tags.has("ref")) return std::nullopt;
  std::string numbers;
  for (const std::string_view number : split(tags["ref"], ';')) {
    numbers += (numbers.empty() ? "" : "/") + std::string(trimmed(number));
  }
  return "Platform " + numbers;
}

std::optional<std::string> ownName(const OsmTags& tags) {
  if (auto platform = platformName(tags)) return platform;
  for (const char* key : {"name", "ref"}) {
    if (tags.has(key)) return std::string(tags[key]);
  }
  return std::nullopt;
}

std::optional<std::string> amenityName(const OsmTags& tags) {
  if (!isAmenity(tags) && !isSoughtRoom(tags)) return std::nullopt;
  if (tags["shop"] == "vacant") return std::nullopt;
  for (const char* key : {"name", "brand"}) {
    if (tags.has(key)) return std::string(tags[key]);
  }
  if (tags["amenity"] == "vending_machine") return "Ticket machine";
  for (const char* key :
       {"amenity", "shop", "healthcare", "office", "craft", "leisure", "room", "tourism"}) {
    if (!tags.affirms(key)) continue;
    return tags[key] == "yes" ? spoken(key) : spoken(tags[key]);
  }
  return std::nullopt;
}

std::string entranceName(const OsmTags& tags) {
  for (const char* key : {"name", "entrance:name"}) {
    if (tags.has(key)) return std::string(tags[key]);
  }
  std::string text = "Entrance";
  if (tags["entrance"] == "main") text = "Main entrance";
  if (tags["entrance"] == "service") text = "Service entrance";
  if (tags.has("ref")) text.append(" ").append(tags["ref"]);
  return text;
}

std::optional<std::string> categoryOf(const OsmTags& tags) {
  if (tags.affirms("shop")) return "shop";
  for (const char* key : {"amenity", "room", "healthcare", "tourism", "leisure"}) {
    if (tags.affirms(key) && tags[key] != "yes") return std::string(tags[key]);
  }
  if (tags.affirms("office")) return "office";
  return std::nullopt;
}

nlohmann::json furtherOf(const std::string& source, const OsmTags& tags) {
  nlohmann::json further{{"source", source}};
  for (const char* key : {"ref",           "alt_name",
                          "short_name",    "room",
                          "amenity",       "shop",
                          "office",        "healthcare",
                          "tourism",       "information",
                          "leisure",       "craft",
                          "vending",       "operator",
                          "brand",         "access",
                          "wheelchair",    "toilets:wheelchair",
                          "male",          "female",
                          "unisex",        "changing_table",
                          "opening_hours", "website",
                          "description"}) {
    if (tags.has(key)) further[key] = std::string(tags[key]);
  }
  return further;
}

}  // namespace KorvaniTools
