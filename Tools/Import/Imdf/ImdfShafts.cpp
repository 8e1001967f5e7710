#include "Import/Imdf/ImdfShafts.hpp"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

#include "Import/Imdf/ImdfCategories.hpp"
#include "Import/Imdf/ImdfRelationships.hpp"

namespace KorvaniTools {
namespace {

/// Units that belong to one way up and down: a forest over all units.
class Stacks {
 public:
  explicit Stacks(std::size_t units) : parents_(units) {
    std::iota(parents_.begin(), parents_.end(), std::size_t{0});
  }

  std::size_t rootOf(std::size_t unit) {
    while (parents_[unit] != unit) {
      parents_[unit] = parents_[parents_[unit]];
      unit = parents_[unit];
    }
    return unit;
  }

  /// The earliest unit of a stack is its root.
  void join(std::size_t a, std::size_t b) {
    const std::size_t first = rootOf(a);
    const std::size_t second = rootOf(b);
    parents_[std::max(first, second)] = std::min(first, second);
  }

 private:
  std::vector<std::size_t> parents_;
};

class ShaftMaker {
 public:
  ShaftMaker(ImdfModel& model, const ImdfShapes& shapes)
      : model_(model), shapes_(shapes), stacks_(model.units.size()) {
    for (const ImdfLevel& level : model.levels) ordinals_.insert(level.ordinal);
  }

  void use(const std::vector<ImdfRelationship>& relationships) {
    for (const ImdfRelationship& each : relationships)
      named_.insert(each.units.begin(), each.units.end());
    for (const ImdfRelationship& each : relationships) use(completed(each));
  }

  void joinOverlapping() {
    for (std::size_t unit = 0; unit < model_.units.size(); ++unit) {
      for (const std::size_t above : nextAbove(unit)) {
        if (!directed_.contains(std::minmax(unit, above))) stacks_.join(unit, above);
      }
    }
  }

  void addStacks() {
    std::map<std::size_t, std::vector<std::size_t>> stacks;
    for (std::size_t unit = 0; unit < model_.units.size(); ++unit) {
      if (kindOf(unit)) stacks[stacks_.rootOf(unit)].push_back(unit);
    }
    for (const auto& [root, units] : stacks) {
      if (ordinalsOf(units).size() < 2) continue;
      addShaft(model_.units[root].id, *kindOf(root), units);
      if (kindOf(root) != ConnectionKind::escalator) continue;
      model_.remarks.note("unit.geojson: escalators of unknown direction, usable both ways",
                          inQuotes(model_.units[root].id));
    }
  }

  /// A few steps within a level are floor that wheelchairs cannot use.
  void levelOutSteps() {
    for (std::size_t unit = 0; unit < model_.units.size(); ++unit) {
      PlanCell& cell = model_.plan.cells[model_.units[unit].cell];
      if (model_.units[unit].category == "steps" && !inShaft_.contains(unit)) {
        cell.kind = CellKind::corridor;
      }
    }
  }

 private:
  std::optional<ConnectionKind> kindOf(std::size_t unit) const {
    const auto kind = connectionOf(model_.units[unit].category);
    return kind == ConnectionKind::travelator ? std::nullopt : kind;
  }

  std::set<std::int64_t> ordinalsOf(const std::vector<std::size_t>& units) const {
    std::set<std::int64_t> ordinals;
    for (const std::size_t unit : units) ordinals.insert(model_.ordinalOf(model_.units[unit]));
    return ordinals;
  }

  void use(const ImdfRelationship& relationship) {
    const std::size_t levels = ordinalsOf(relationship.units).size();
    if (relationship.kind != ConnectionKind::travelator && levels >= 2) {
      useUnits(relationship);
    } else if (relationship.origin && relationship.destination) {
      addLine(relationship);
    } else {
      model_.remarks.note("relationship.geojson: joins nothing, ignored",
                          inQuotes(relationship.id));
    }
  }

  /// With what goes on from its units on the levels of its ends, when it names those of one level
  /// only: an escalator is often drawn on both of its levels and named on one.
  ImdfRelationship completed(ImdfRelationship relationship) const {
    const bool oneLevel = ordinalsOf(relationship.units).size() == 1;
    if (!oneLevel || !relationship.origin || !relationship.destination) return relationship;
    const std::vector<std::size_t> units = relationship.units;
    const std::set<std::int64_t> ends{model_.levels[relationship.origin->level].ordinal,
                                      model_.levels[relationship.destination->level].ordinal};
    for (const std::size_t unit : units) {
      for (const std::int64_t ordinal : ends) {
        if (ordinal == model_.ordinalOf(model_.units[unit])) continue;
        for (const std::size_t other : shapes_.unitsAbove(unit, ordinal)) {
          const bool free = kindOf(other) == kindOf(unit) && !named_.contains(other);
          if (free) relationship.units.push_back(other);
        }
      }
    }
    return relationship;
  }

  void useUnits(const ImdfRelationship& relationship) {
    const std::vector<std::size_t>& units = relationship.units;
    if (relationship.directed) {
      for (const std::size_t a : units) {
        for (const std::size_t b : units) directed_.insert(std::minmax(a, b));
      }
      PlanShaft& shaft = addShaft(relationship.id, relationship.kind, units);
      shaft.oneway = true;
      shaft.backward = leadsDown(relationship);
      return;
    }
    for (const std::size_t unit : units) stacks_.join(units.front(), unit);
  }

  bool leadsDown(const ImdfRelationship& relationship) const {
    std::int64_t first = model_.ordinalOf(model_.units[relationship.units.front()]);
    std::int64_t last = model_.ordinalOf(model_.units[relationship.units.back()]);
    if (relationship.origin && relationship.destination) {
      const std::int64_t from = model_.levels[relationship.origin->level].ordinal;
      const std::int64_t to = model_.levels[relationship.destination->level].ordinal;
      if (from != to) return to < from;
    }
    return last < first;
  }

  void addLine(const ImdfRelationship& relationship) {
    const std::int64_t from = model_.levels[relationship.origin->level].ordinal;
    const std::int64_t to = model_.levels[relationship.destination->level].ordinal;
    PlanLine line;
    line.source = relationship.id;
    line.kind = relationship.kind;
    // Whatever leads to another level without stairs is a slope.
    if (from != to && line.kind == ConnectionKind::path) line.kind = ConnectionKind::ramp;
    line.oneway = relationship.directed;
    line.incline = from == to ? 0 : (from < to ? 1 : -1);
    for (const std::int64_t ordinal : std::set<std::int64_t>{from, to}) {
      line.levels.push_back(static_cast<double>(ordinal));
    }
    line.vertices = {{0, spotOf(*relationship.origin, relationship)},
                     {0, spotOf(*relationship.destination, relationship)}};
    model_.plan.lines.push_back(std::move(line));
  }

  /// Where people step on or off. A whole walkway that it leads to does not tell; where the stairs
  /// between are drawn does.
  Coordinate spotOf(const RelationshipEnd& end, const ImdfRelationship& relationship) const {
    const std::vector<std::size_t>& units = relationship.units;
    const bool tells = !end.unit || units.empty() ||
                       std::find(units.begin(), units.end(), *end.unit) != units.end();
    if (tells) return end.coordinate;
    const bool last = &end == &*relationship.destination;
    return shapes_.spotBeside(*end.unit, last ? units.back() : units.front());
  }

  PlanShaft& addShaft(const std::string& source, ConnectionKind kind,
                      const std::vector<std::size_t>& units) {
    PlanShaft shaft;
    shaft.source = source;
    shaft.kind = kind;
    shaft.stepFree = StepFree::yes;
    for (const std::size_t unit : units) {
      const std::size_t cell = model_.units[unit].cell;
      shaft.cells.push_back(cell);
      if (model_.plan.cells[cell].stepFree != StepFree::yes) shaft.stepFree = StepFree::unknown;
      inShaft_.insert(unit);
    }
    for (const std::int64_t ordinal : ordinalsOf(units)) {
      shaft.levels.push_back(static_cast<double>(ordinal));
    }
    model_.plan.shafts.push_back(std::move(shaft));
    return model_.plan.shafts.back();
  }

  /// The units on the next higher level that go on from this one.
  std::vector<std::size_t> nextAbove(std::size_t unit) const {
    const auto kind = kindOf(unit);
    if (!kind) return {};
    auto ordinal = ordinals_.upper_bound(model_.ordinalOf(model_.units[unit]));
    for (; ordinal != ordinals_.end(); ++ordinal) {
      std::vector<std::size_t> same;
      bool floor = false;
      for (const std::size_t other : shapes_.unitsAbove(unit, *ordinal)) {
        if (kindOf(other) == kind) same.push_back(other);
        floor = floor || isFloorAbove(other, unit);
      }
      if (!same.empty() || (floor && kind != ConnectionKind::elevator)) return same;
    }
    return {};
  }

  bool isFloorAbove(std::size_t other, std::size_t unit) const {
    return model_.plan.cells[model_.units[other].cell].kind != CellKind::closed &&
           shapes_.covers(other, unit);
  }

  ImdfModel& model_;
  const ImdfShapes& shapes_;
  Stacks stacks_;
  std::set<std::int64_t> ordinals_;
  /// Pairs of units that a directed relationship has joined already.
  std::set<std::pair<std::size_t, std::size_t>> directed_;
  std::set<std::size_t> named_;  ///< by any relationship
  std::set<std::size_t> inShaft_;
};

}  // namespace

void joinImdfLevels(ImdfModel& model, const ImdfShapes& shapes) {
  ShaftMaker maker(model, shapes);
  maker.use(readImdfRelationships(model, shapes));
  maker.joinOverlapping();
  maker.addStacks();
  maker.levelOutSteps();
}

}  // namespace KorvaniTools
