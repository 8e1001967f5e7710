#include "Drawing/RoomKind.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "Support/Text.hpp"

namespace KorvaniTools {
namespace {

/// What a word of map makers stands for.
template <class Meaning>
struct MapWord {
  std::string_view word;
  Meaning meaning;
};

using Word = MapWord<RoomKind>;
using TypeName = MapWord<ConnectionSymbol>;

/// The entry of that word, which is in small letters; null when there is none.
template <class Meaning, std::size_t size>
const MapWord<Meaning>* find(const std::array<MapWord<Meaning>, size>& words,
                             std::string_view wanted) {
  const auto found = std::find_if(words.begin(), words.end(), [&](const MapWord<Meaning>& each) {
    return each.word == wanted;
  });
  return found == words.end() ? nullptr : &*found;
}

/// Words of map makers; each is looked for in the whole of a category and in its parts.
constexpr std::array kWords{
    Word{"area", RoomKind::corridor},
    Word{"arrivals", RoomKind::corridor},
    Word{"corridor", RoomKind::corridor},
    Word{"entrance", RoomKind::corridor},
    Word{"footway", RoomKind::corridor},
    Word{"foyer", RoomKind::corridor},
    Word{"hall", RoomKind::corridor},
    Word{"hallway", RoomKind::corridor},
    Word{"lobby", RoomKind::corridor},
    Word{"movingwalkway", RoomKind::corridor},
    Word{"passage", RoomKind::corridor},
    Word{"ramp", RoomKind::corridor},
    Word{"walkway", RoomKind::corridor},

    Word{"administration", RoomKind::office},
    Word{"conferenceroom", RoomKind::office},
    Word{"conference", RoomKind::office},
    Word{"huddleroom", RoomKind::office},
    Word{"meeting", RoomKind::office},
    Word{"office", RoomKind::office},
    Word{"staff", RoomKind::office},

    Word{"auditorium", RoomKind::classroom},
    Word{"class", RoomKind::classroom},
    Word{"classroom", RoomKind::classroom},
    Word{"computer", RoomKind::classroom},
    Word{"lab", RoomKind::classroom},
    Word{"laboratory", RoomKind::classroom},
    Word{"lecture", RoomKind::classroom},
    Word{"library", RoomKind::classroom},
    Word{"museum", RoomKind::classroom},
    Word{"reading", RoomKind::classroom},
    Word{"school", RoomKind::classroom},
    Word{"seminar", RoomKind::classroom},
    Word{"theater", RoomKind::classroom},
    Word{"theatre", RoomKind::classroom},
    Word{"university", RoomKind::classroom},

    Word{"bookshop", RoomKind::shop},
    Word{"chemist", RoomKind::shop},
    Word{"clothes", RoomKind::shop},
    Word{"hairdresser", RoomKind::shop},
    Word{"kiosk", RoomKind::shop},
    Word{"marketplace", RoomKind::shop},
    Word{"pharmacy", RoomKind::shop},
    Word{"retail", RoomKind::shop},
    Word{"shop", RoomKind::shop},
    Word{"souvenirs", RoomKind::shop},
    Word{"store", RoomKind::shop},
    Word{"supermarket", RoomKind::shop},

    Word{"bakery", RoomKind::food},
    Word{"bar", RoomKind::food},
    Word{"cafe", RoomKind::food},
    Word{"canteen", RoomKind::food},
    Word{"concession", RoomKind::food},
    Word{"dining", RoomKind::food},
    Word{"fast", RoomKind::food},
    Word{"food", RoomKind::food},
    Word{"foodservice", RoomKind::food},
    Word{"pub", RoomKind::food},
    Word{"restaurant", RoomKind::food},

    Word{"bathroom", RoomKind::toilet},
    Word{"restroom", RoomKind::toilet},
    Word{"shower", RoomKind::toilet},
    Word{"toilet", RoomKind::toilet},
    Word{"toilets", RoomKind::toilet},
    Word{"wc", RoomKind::toilet},

    Word{"atm", RoomKind::service},
    Word{"bank", RoomKind::service},
    Word{"checkin", RoomKind::service},
    Word{"cloakroom", RoomKind::service},
    Word{"doctors", RoomKind::service},
    Word{"firstaid", RoomKind::service},
    Word{"information", RoomKind::service},
    Word{"locker", RoomKind::service},
    Word{"lockers", RoomKind::service},
    Word{"luggage", RoomKind::service},
    Word{"medical", RoomKind::service},
    Word{"police", RoomKind::service},
    Word{"post", RoomKind::service},
    Word{"reception", RoomKind::service},
    Word{"security", RoomKind::service},
    Word{"service", RoomKind::service},
    Word{"ticket", RoomKind::service},
    Word{"tickets", RoomKind::service},
    Word{"wardrobe", RoomKind::service},

    Word{"gate", RoomKind::waiting},
    Word{"lounge", RoomKind::waiting},
    Word{"platform", RoomKind::waiting},
    Word{"privatelounge", RoomKind::waiting},
    Word{"waiting", RoomKind::waiting},
    Word{"waitingroom", RoomKind::waiting},

    Word{"escalator", RoomKind::stairs},
    Word{"stairs", RoomKind::stairs},
    Word{"stairwell", RoomKind::stairs},
    Word{"staircase", RoomKind::stairs},
    Word{"steps", RoomKind::stairs},

    Word{"elevator", RoomKind::elevator},
    Word{"lift", RoomKind::elevator},

    Word{"balcony", RoomKind::outdoor},
    Word{"courtyard", RoomKind::outdoor},
    Word{"garden", RoomKind::outdoor},
    Word{"outdoor", RoomKind::outdoor},
    Word{"parking", RoomKind::outdoor},
    Word{"playground", RoomKind::outdoor},
    Word{"road", RoomKind::outdoor},
    Word{"stadium", RoomKind::outdoor},
    Word{"terrace", RoomKind::outdoor},
    Word{"vegetation", RoomKind::outdoor},

    Word{"closed", RoomKind::closed},
    Word{"column", RoomKind::closed},
    Word{"nonpublic", RoomKind::closed},
    Word{"opentobelow", RoomKind::closed},
    Word{"plant", RoomKind::closed},
    Word{"serverroom", RoomKind::closed},
    Word{"shaft", RoomKind::closed},
    Word{"storage", RoomKind::closed},
    Word{"structure", RoomKind::closed},
    Word{"technical", RoomKind::closed},
    Word{"track", RoomKind::closed},
    Word{"utility", RoomKind::closed},
    Word{"void", RoomKind::closed},
};

constexpr std::array<std::string_view, 13> kKindNames{
    "other",   "corridor", "office", "classroom", "shop",    "food",  "toilet",
    "service", "waiting",  "stairs", "elevator",  "outdoor", "closed"};

constexpr std::array<std::string_view, 13> kKindWords{
    "Room",       "Hall or corridor", "Office",  "Class room or library",    "Shop",
    "Food",       "Toilets",          "Service", "Gate, platform or lounge", "Stairwell",
    "Lift shaft", "Outdoors",         "Closed"};

struct Symbol {
  ConnectionSymbol symbol;
  std::string_view name;
  std::string_view words;
};

constexpr std::array<Symbol, 6> kSymbols{{
    {ConnectionSymbol::path, "path", "Way to another level"},
    {ConnectionSymbol::stairs, "stairs", "Stairs"},
    {ConnectionSymbol::escalator, "escalator", "Escalator"},
    {ConnectionSymbol::elevator, "elevator", "Lift"},
    {ConnectionSymbol::ramp, "ramp", "Ramp"},
    {ConnectionSymbol::ladder, "ladder", "Ladder"},
}};

constexpr std::array kTypeNames{
    TypeName{"stairs", ConnectionSymbol::stairs},
    TypeName{"staircase", ConnectionSymbol::stairs},
    TypeName{"steps", ConnectionSymbol::stairs},
    TypeName{"escalator", ConnectionSymbol::escalator},
    TypeName{"elevator", ConnectionSymbol::elevator},
    TypeName{"lift", ConnectionSymbol::elevator},
    TypeName{"ramp", ConnectionSymbol::ramp},
    TypeName{"travelator", ConnectionSymbol::ramp},
    TypeName{"moving walkway", ConnectionSymbol::ramp},
    TypeName{"ladder", ConnectionSymbol::ladder},
};

}  // namespace

RoomKind roomKindOf(std::string_view category) {
  const std::string folded = foldedCase(category);
  if (const Word* word = find(kWords, folded)) return word->meaning;
  constexpr auto kSeparators = "._:;=-/ ,";
  for (std::size_t from = 0; from < folded.size();) {
    const std::size_t end = std::min(folded.find_first_of(kSeparators, from), folded.size());
    const std::string_view part = std::string_view(folded).substr(from, end - from);
    if (const Word* word = find(kWords, part)) return word->meaning;
    from = end + 1;
  }
  return RoomKind::other;
}

std::string_view nameOf(RoomKind kind) { return kKindNames[static_cast<std::size_t>(kind)]; }

std::string_view wordsFor(RoomKind kind) { return kKindWords[static_cast<std::size_t>(kind)]; }

ConnectionSymbol connectionSymbolOf(std::string_view type) {
  const TypeName* name = find(kTypeNames, foldedCase(type));
  return name == nullptr ? ConnectionSymbol::path : name->meaning;
}

std::string_view nameOf(ConnectionSymbol symbol) {
  return kSymbols[static_cast<std::size_t>(symbol)].name;
}

std::string_view wordsFor(ConnectionSymbol symbol) {
  return kSymbols[static_cast<std::size_t>(symbol)].words;
}

}  // namespace KorvaniTools
