#include "Import/Imdf/ImdfPlaces.hpp"

#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

#include "Import/Imdf/ImdfCategories.hpp"
#include "Import/Imdf/ImdfUnits.hpp"

namespace KorvaniTools {
namespace {

struct Anchor {
  std::size_t unit = 0;  ///< index into `ImdfModel::units`
  Coordinate coordinate;
  std::optional<std::string> address;
};

struct Occupant {
  std::string id;
  std::string name;
  std::size_t anchor = 0;
  nlohmann::json further;
};

class PlaceReader {
 public:
  explicit PlaceReader(ImdfModel& model) : model_(model) {}

  void read() {
    each("address", [this](const ImdfFeature& feature) { addAddress(feature); });
    each("anchor", [this](const ImdfFeature& feature) { addAnchor(feature); });
    each("occupant", [this](const ImdfFeature& feature) { addOccupant(feature); });
    for (Occupant& occupant : occupants_) place(occupant);
    each("amenity", [this](const ImdfFeature& feature) { addAmenity(feature); });
    for (const ImdfUnit& unit : model_.units) nameRestroom(unit);
  }

 private:
  void each(const char* kind, const std::function<void(const ImdfFeature&)>& use) {
    forEachFeature(model_.archive, kind, Broken::someLeftOut, model_.remarks, use);
  }

  void addAddress(const ImdfFeature& feature) {
    std::string address;
    for (const char* key : {"address", "unit", "postal_code", "locality"}) {
      const std::string part = feature.text(key).value_or("");
      if (!part.empty()) address += (address.empty() ? "" : ", ") + part;
    }
    if (!address.empty()) addresses_.emplace(feature.id(), address);
  }

  void addAnchor(const ImdfFeature& feature) {
    const auto unit = model_.unitIds.find(feature.fields().requiredString("unit_id"));
    if (unit == model_.unitIds.end()) {
      feature.note("no unit has the unit_id, left out");
      return;
    }
    const Anchor anchor{unit->second, feature.point(), addressOf(feature)};
    if (enroll(anchorIds_, feature, anchors_.size())) anchors_.push_back(anchor);
  }

  std::optional<std::string> addressOf(const ImdfFeature& feature) const {
    const auto found = addresses_.find(feature.text("address_id").value_or(""));
    return found == addresses_.end() ? std::nullopt : std::optional(found->second);
  }

  void addOccupant(const ImdfFeature& feature) {
    const auto name = feature.label("name", model_.languages);
    if (!name) {
      feature.note("no name, left out");
      return;
    }
    const auto anchor = anchorIds_.find(feature.text("anchor_id").value_or(""));
    if (anchor == anchorIds_.end()) {
      feature.note("no anchor has the anchor_id, left out");
      return;
    }
    if (!enroll(occupantIds_, feature, occupants_.size())) return;
    Occupant occupant{feature.id(), name->text, anchor->second, furtherOf(feature, model_)};
    const auto& address = anchors_[anchor->second].address;
    if (address) occupant.further["address"] = *address;
    ++occupantsOf_[anchors_[anchor->second].unit];
    occupants_.push_back(std::move(occupant));
  }

  void place(Occupant& occupant) {
    const Anchor& anchor = anchors_[occupant.anchor];
    const ImdfUnit& unit = model_.units[anchor.unit];
    PlanCell& cell = model_.plan.cells[unit.cell];
    const bool only = occupantsOf_[anchor.unit] == 1;
    if (only && cell.name.value_or(occupant.name) == occupant.name) {
      cell.name = occupant.name;
      cell.isPlace = true;
      cell.displayPoint = anchor.coordinate;
      cell.further.update(occupant.further);
      return;
    }
    model_.plan.places.push_back({occupant.id, occupant.name, model_.ordinalsOf(unit.level),
                                  anchor.coordinate, false, std::move(occupant.further)});
  }

  void addAmenity(const ImdfFeature& feature) {
    const std::string category = feature.text("category").value_or("");
    if (!isDestination(category)) return;
    const auto name = feature.label("name", model_.languages);
    if (!name && category.empty()) {
      feature.note("neither name nor category, left out");
      return;
    }
    PlanPlace place;
    place.source = feature.id();
    place.coordinate = feature.point();
    place.levels = levelsOf(feature);
    if (place.levels.empty()) {
      feature.note("in no unit of the archive, left out");
      return;
    }
    if (!enroll(amenityIds_, feature, model_.plan.places.size())) return;
    for (const std::string& unit : feature.texts("unit_ids")) withAmenity_.insert(unit);
    place.name = name ? name->text : nameOf(category);
    place.further = furtherOf(feature, model_);
    model_.plan.places.push_back(std::move(place));
  }

  PlanLevelSet levelsOf(const ImdfFeature& amenity) const {
    std::set<double> levels;
    for (const std::string& id : amenity.texts("unit_ids")) {
      const auto unit = model_.unitIds.find(id);
      if (unit == model_.unitIds.end()) continue;
      levels.insert(static_cast<double>(model_.ordinalOf(model_.units[unit->second])));
    }
    return {levels.begin(), levels.end()};
  }

  /// Archives rarely name their restrooms, and people ask for them all the same.
  void nameRestroom(const ImdfUnit& unit) {
    PlanCell& cell = model_.plan.cells[unit.cell];
    if (!isRestroom(unit.category) || cell.name || withAmenity_.contains(unit.id)) return;
    cell.name = nameOf(unit.category);
    cell.isPlace = true;
    cell.further = {{"category", unit.category}};
  }

  /// "Restroom (female)" for "restroom.female".
  static std::string nameOf(const std::string& category) {
    const std::size_t dot = category.find('.');
    std::string name = category.substr(0, dot);
    name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
    if (dot == std::string::npos) return name;
    std::string rest = category.substr(dot + 1);
    std::replace(rest.begin(), rest.end(), '.', ' ');
    return name + " (" + rest + ')';
  }

  ImdfModel& model_;
  std::map<std::string, std::string> addresses_;
  std::vector<Anchor> anchors_;
  ImdfIds anchorIds_;
  std::vector<Occupant> occupants_;
  ImdfIds occupantIds_;
  std::map<std::size_t, std::size_t> occupantsOf_;  ///< how many a unit has
  ImdfIds amenityIds_;
  std::set<std::string> withAmenity_;  ///< ids of the units that amenities name
};

}  // namespace

void readImdfPlaces(ImdfModel& model) { PlaceReader(model).read(); }

}  // namespace KorvaniTools
