#include "Import/Imdf/ImdfRelationships.hpp"

#include <algorithm>

#include "Import/Imdf/ImdfCategories.hpp"

namespace KorvaniTools {
namespace {

class RelationshipParser {
 public:
  RelationshipParser(const ImdfModel& model, const ImdfShapes& shapes, const ImdfFeature& feature)
      : model_(model), shapes_(shapes), feature_(feature) {}

  ImdfRelationship parse() {
    relationship_.id = feature_.id();
    relationship_.directed = isDirected();
    if (const Json* origin = feature_.find("origin")) relationship_.origin = end(*origin);
    if (const Json* between = feature_.find("intermediary")) intermediary(*between);
    if (const Json* last = feature_.find("destination")) relationship_.destination = end(*last);
    relationship_.kind = kind();
    return relationship_;
  }

 private:
  bool isDirected() const {
    const std::string direction = feature_.text("direction").value_or("undirected");
    if (direction != "directed" && direction != "undirected") {
      feature_.note("direction is neither directed nor undirected, taken as undirected");
    }
    return direction == "directed";
  }

  void intermediary(const Json& references) {
    if (!references.is_array()) {
      end(references);
      return;
    }
    for (const Json& reference : references) end(reference);
  }

  /// Also puts a way up and down among the relationship's units.
  std::optional<RelationshipEnd> end(const Json& reference) {
    const auto id = reference.is_object() ? reference.find("id") : reference.end();
    if (!reference.is_object() || id == reference.end() || !id->is_string()) {
      feature_.note("names features otherwise than by id and feature_type, ignored");
      return {};
    }
    const auto& name = id->get_ref<const std::string&>();
    if (const auto unit = model_.unitIds.find(name); unit != model_.unitIds.end()) {
      return unitEnd(unit->second);
    }
    if (const auto opening = model_.openingIds.find(name); opening != model_.openingIds.end()) {
      return openingEnd(model_.openings[opening->second]);
    }
    feature_.note("names features that are neither units nor openings of the archive, ignored");
    return {};
  }

  RelationshipEnd unitEnd(std::size_t index) {
    const ImdfUnit& unit = model_.units[index];
    auto& units = relationship_.units;
    const bool isNew = std::find(units.begin(), units.end(), index) == units.end();
    if (connectionOf(unit.category) && isNew) units.push_back(index);
    return {unit.level, shapes_.pointIn(index), index};
  }

  RelationshipEnd openingEnd(const ImdfOpening& opening) const {
    return {opening.level, middleOf(model_.plan.doors[opening.door].positions), std::nullopt};
  }

  /// "traversal" says nothing about the kind of way: that is what it leads through.
  ConnectionKind kind() const {
    if (const auto kind = connectionOf(feature_.text("category").value_or(""))) return *kind;
    if (relationship_.units.empty()) return ConnectionKind::path;
    return *connectionOf(model_.units[relationship_.units.front()].category);
  }

  const ImdfModel& model_;
  const ImdfShapes& shapes_;
  const ImdfFeature& feature_;
  ImdfRelationship relationship_;
};

}  // namespace

std::vector<ImdfRelationship> readImdfRelationships(ImdfModel& model, const ImdfShapes& shapes) {
  std::vector<ImdfRelationship> relationships;
  ImdfIds ids;
  forEachFeature(model.archive, "relationship", Broken::someLeftOut, model.remarks,
                 [&](const ImdfFeature& feature) {
                   if (!enroll(ids, feature, relationships.size())) return;
                   relationships.push_back(RelationshipParser(model, shapes, feature).parse());
                 });
  return relationships;
}

}  // namespace KorvaniTools
