#include "Import/Osm/OsmPasses.hpp"

#include <algorithm>
#include <osmium/osm.hpp>
#include <utility>

#include "Import/Osm/NearZone.hpp"
#include "Import/Osm/OsmAssembly.hpp"
#include "Import/Osm/OsmSelection.hpp"
#include "Import/Osm/OsmStream.hpp"
#include "Support/InputError.hpp"

namespace KorvaniTools {
namespace {

constexpr std::size_t kPasses = 6;
/// How near something indoors an entrance or a shop must be that nothing indoors refers to.
constexpr double kNextTo = 25;

/// Cheap: most objects of a file are none of ours.
bool mayMatter(const osmium::TagList& tags) {
  return hasAnyOf(tags, {"indoor", "level", "repeat_on", "highway", "room", "door", "entrance",
                         "barrier", "railway"});
}

Coordinate coordinateOf(osmium::Location location) { return {location.lat(), location.lon()}; }

std::vector<std::int64_t> refsOf(const osmium::Way& way) {
  std::vector<std::int64_t> refs;
  for (const osmium::NodeRef& node : way.nodes()) {
    // A corner that follows itself would be an edge without length.
    if (refs.empty() || refs.back() != node.ref()) refs.push_back(node.ref());
  }
  return refs;
}

bool isClosed(const osmium::Way& way) { return way.nodes().size() > 3 && way.is_closed(); }

class Extraction {
 public:
  Extraction(const std::filesystem::path& file, const OsmOptions& options)
      : options_(options), stream_(file, options.progress, kPasses) {}

  OsmExtract run() {
    selectRelations();
    selectWays();
    locate();
    if (options_.box) keepInBox();
    markZone();
    findNear();
    selectNearWays();
    locateRest();
    return finish();
  }

 private:
  void selectRelations();
  void selectRelation(const osmium::Relation& relation);
  void selectWays();
  void locate();
  void keepInBox();
  void markZone();
  void findNear();
  void selectNearWays();
  void selectNearWay(const osmium::Way& way);
  void growBuildings(const osmium::Way& way);
  void locateRest();
  OsmExtract finish();
  void keepNodes(OsmExtract& extract) const;

  const Coordinate* position(std::int64_t node) const;
  bool isNear(const osmium::Way& way) const;
  Rectangle rectangleOf(const std::vector<std::int64_t>& nodes) const;
  Rectangle rectangleOf(const KeptRelation& relation) const;
  bool inBox(Coordinate coordinate) const {
    return !options_.box || options_.box->contains(coordinate);
  }
  std::optional<std::string> buildingName() const;

  const OsmOptions& options_;
  OsmStream stream_;
  std::vector<KeptRelation> relations_;
  std::unordered_set<std::int64_t> members_;         ///< ways of relations indoors
  std::unordered_set<std::int64_t> outdoorMembers_;  ///< ways of relations that may be near
  std::vector<NamedBuilding> buildings_;
  std::unordered_multimap<std::int64_t, std::size_t> buildingWays_;
  KeptWays ways_;
  std::vector<OsmNode> nodes_;  ///< with tags that matter
  NodeTable needed_;
  NodeTable near_;
  NodeTable rest_;
  NearZone zone_;
};

const Coordinate* Extraction::position(std::int64_t node) const {
  if (const Coordinate* const found = needed_.find(node)) return found;
  if (const Coordinate* const found = near_.find(node)) return found;
  return rest_.find(node);
}

Rectangle Extraction::rectangleOf(const std::vector<std::int64_t>& nodes) const {
  Rectangle rectangle;
  for (const std::int64_t node : nodes) {
    if (const Coordinate* const found = position(node)) rectangle.include(*found);
  }
  return rectangle;
}

Rectangle Extraction::rectangleOf(const KeptRelation& relation) const {
  Rectangle rectangle;
  for (const auto& [id, inner] : relation.members) {
    if (const KeptWay* const way = ways_.find(id)) rectangle.include(rectangleOf(way->nodes));
  }
  return rectangle;
}

void Extraction::selectRelations() {
  stream_.relations([this](const osmium::Relation& relation) {
    if (tagOf(relation.tags(), "type") == "multipolygon") selectRelation(relation);
  });
}

void Extraction::selectRelation(const osmium::Relation& relation) {
  KeptRelation kept{relation.id(), tagsOf(relation.tags()), {}, false};
  const Interest interest = wayInterest(kept.tags, true);
  const bool building = kept.tags.affirms("building") && kept.tags.has("name");
  if (building) buildings_.push_back({std::string(kept.tags["name"]), {}});
  for (const osmium::RelationMember& member : relation.members()) {
    if (member.type() != osmium::item_type::way) continue;
    kept.members.emplace_back(member.ref(), std::string_view(member.role()) == "inner");
    if (building) buildingWays_.emplace(member.ref(), buildings_.size() - 1);
    if (interest == Interest::indoors) members_.insert(member.ref());
    if (interest == Interest::nearby) outdoorMembers_.insert(member.ref());
  }
  kept.outdoors = interest == Interest::nearby;
  if (interest != Interest::none) relations_.push_back(std::move(kept));
}

void Extraction::selectWays() {
  stream_.ways([this](const osmium::Way& way) {
    const bool member = members_.contains(way.id());
    if (!member && !mayMatter(way.tags())) return;
    KeptWay kept{way.id(), {}, tagsOf(way.tags()), false, false};
    kept.own = wayInterest(kept.tags, isClosed(way)) == Interest::indoors;
    if (!member && !kept.own) return;
    kept.nodes = refsOf(way);
    ways_.add(std::move(kept));
  });
  for (const KeptWay& way : ways_.all()) {
    for (const std::int64_t node : way.nodes) needed_.need(node);
  }
  needed_.seal();
}

void Extraction::locate() {
  stream_.nodes([this](const osmium::Node& node) {
    if (!node.location().valid()) return;
    const Coordinate coordinate = coordinateOf(node.location());
    const bool used = needed_.set(node.id(), coordinate);
    if (node.tags().empty()) return;
    if (!used && !mayMatter(node.tags())) return;
    OsmNode kept{node.id(), coordinate, tagsOf(node.tags())};
    const bool keep = used ? nodeMatters(kept.tags)
                           : nodeInterest(kept.tags) == Interest::indoors && inBox(coordinate);
    if (keep) nodes_.push_back(std::move(kept));
  });
}

void Extraction::keepInBox() {
  for (KeptWay& way : ways_.all()) {
    way.own = way.own && options_.box->touches(rectangleOf(way.nodes));
  }
  const auto outside = [this](const KeptRelation& relation) {
    return !relation.outdoors && !options_.box->touches(rectangleOf(relation));
  };
  relations_.erase(std::remove_if(relations_.begin(), relations_.end(), outside), relations_.end());
}

void Extraction::markZone() {
  const auto mark = [this](const KeptWay& way) {
    const Coordinate* last = nullptr;
    for (const std::int64_t node : way.nodes) {
      const Coordinate* const next = position(node);
      if (next != nullptr) zone_.addLine(last == nullptr ? *next : *last, *next);
      last = next;
    }
  };
  for (const KeptWay& way : ways_.all()) {
    if (way.own) mark(way);
  }
  for (const KeptRelation& relation : relations_) {
    for (const auto& [id, inner] : relation.members) {
      const KeptWay* const way = relation.outdoors ? nullptr : ways_.find(id);
      if (way != nullptr) mark(*way);
    }
  }
  for (const OsmNode& node : nodes_) {
    const bool counts = nodeInterest(node.tags) == Interest::indoors && inBox(node.coordinate);
    if (counts) zone_.add(node.coordinate);
  }
  if (zone_.empty()) {
    throw InputError(stream_.name() + ": found nothing indoors" +
                     (options_.box ? " in the box" : "") +
                     ", expected features with the tag indoor or level");
  }
}

void Extraction::findNear() {
  stream_.nodes([this](const osmium::Node& node) {
    if (!node.location().valid() || needed_.needs(node.id())) return;
    const Coordinate coordinate = coordinateOf(node.location());
    if (!zone_.near(coordinate, NearZone::kReach)) return;
    near_.put(node.id(), coordinate);
    if (!mayMatter(node.tags())) return;
    OsmNode kept{node.id(), coordinate, tagsOf(node.tags())};
    // Those indoors are there already.
    if (nodeMatters(kept.tags) && nodeInterest(kept.tags) != Interest::indoors) {
      nodes_.push_back(std::move(kept));
    }
  });
  near_.seal();
}

bool Extraction::isNear(const osmium::Way& way) const {
  return std::any_of(way.nodes().begin(), way.nodes().end(), [this](const osmium::NodeRef& node) {
    const Coordinate* const found = position(node.ref());
    return found != nullptr && zone_.near(*found, NearZone::kReach);
  });
}

void Extraction::growBuildings(const osmium::Way& way) {
  const auto [first, last] = buildingWays_.equal_range(way.id());
  for (auto entry = first; entry != last; ++entry) {
    buildings_[entry->second].rectangle.include(rectangleOf(refsOf(way)));
  }
  const std::string_view name = tagOf(way.tags(), "name");
  if (!name.empty() && hasAnyOf(way.tags(), {"building"}) && isNear(way)) {
    buildings_.push_back({std::string(name), rectangleOf(refsOf(way))});
  }
}

void Extraction::selectNearWay(const osmium::Way& way) {
  const bool member = outdoorMembers_.contains(way.id());
  if (!member && !hasAnyOf(way.tags(), {"highway"})) return;
  KeptWay kept{way.id(), {}, tagsOf(way.tags()), false, true};
  kept.own = wayInterest(kept.tags, isClosed(way)) == Interest::nearby && isNear(way);
  if (!member && !kept.own) return;
  kept.nodes = refsOf(way);
  ways_.add(std::move(kept));
}

void Extraction::selectNearWays() {
  stream_.ways([this](const osmium::Way& way) {
    growBuildings(way);
    selectNearWay(way);
  });
  const auto far = [this](const KeptRelation& relation) {
    const auto near = [this](const std::pair<std::int64_t, bool>& member) {
      const KeptWay* const way = ways_.find(member.first);
      return way != nullptr &&
             std::any_of(way->nodes.begin(), way->nodes.end(), [this](std::int64_t node) {
               const Coordinate* const found = position(node);
               return found != nullptr && zone_.near(*found, NearZone::kReach);
             });
    };
    return relation.outdoors &&
           !std::any_of(relation.members.begin(), relation.members.end(), near);
  };
  relations_.erase(std::remove_if(relations_.begin(), relations_.end(), far), relations_.end());
}

/// Floor outdoors is kept whole, with corners that are not near.
void Extraction::locateRest() {
  const auto need = [this](const KeptWay& way) {
    for (const std::int64_t node : way.nodes) {
      if (position(node) == nullptr && !needed_.needs(node)) rest_.need(node);
    }
  };
  for (const KeptWay& way : ways_.all()) {
    if (way.own && way.outdoors && roleOf(way.tags, way.closed()) != WayRole::line) need(way);
  }
  for (const KeptRelation& relation : relations_) {
    for (const auto& [id, inner] : relation.members) {
      const KeptWay* const way = ways_.find(id);
      if (relation.outdoors && way != nullptr) need(*way);
    }
  }
  rest_.seal();
  if (rest_.empty()) return;
  stream_.nodes([this](const osmium::Node& node) {
    if (node.location().valid()) rest_.set(node.id(), coordinateOf(node.location()));
  });
}

double overlap(const Rectangle& a, const Rectangle& b) {
  const double north = std::min(a.northEast.latitude, b.northEast.latitude) -
                       std::max(a.southWest.latitude, b.southWest.latitude);
  const double east = std::min(a.northEast.longitude, b.northEast.longitude) -
                      std::max(a.southWest.longitude, b.southWest.longitude);
  return north > 0 && east > 0 ? north * east : 0;
}

std::optional<std::string> Extraction::buildingName() const {
  const NamedBuilding* best = nullptr;
  double most = 0;
  for (const NamedBuilding& building : buildings_) {
    const double part = overlap(building.rectangle, zone_.rectangle());
    if (part <= most) continue;
    most = part;
    best = &building;
  }
  if (best == nullptr) return std::nullopt;
  return best->name;
}

/// Nodes that something kept refers to, that are indoors, or right beside.
void Extraction::keepNodes(OsmExtract& extract) const {
  std::unordered_set<std::int64_t> used;
  for (const OsmWay& way : extract.ways) {
    for (const PlanVertex& corner : way.corners) used.insert(corner.node);
  }
  for (const OsmArea& area : extract.areas) used.insert(area.nodes.begin(), area.nodes.end());
  std::unordered_set<std::int64_t> known;
  for (const OsmNode& node : nodes_) {
    const Interest interest = nodeInterest(node.tags);
    const bool keep = used.contains(node.id) ||
                      (inBox(node.coordinate) &&
                       (interest == Interest::indoors ||
                        (interest == Interest::nearby && zone_.near(node.coordinate, kNextTo))));
    if (keep && known.insert(node.id).second) extract.nodes.push_back(node);
  }
}

OsmExtract Extraction::finish() {
  OsmExtract extract;
  const auto find = [this](std::int64_t node) { return position(node); };
  const auto trim = [this](Coordinate corner) { return zone_.near(corner, NearZone::kReach); };
  OsmAssembly assembly(find, trim, extract);
  for (const bool outdoors : {false, true}) {
    for (const KeptRelation& relation : relations_) {
      const bool touches = !options_.box || options_.box->touches(rectangleOf(relation));
      if (touches && relation.outdoors == outdoors) assembly.addArea(relation, ways_);
    }
    for (const KeptWay& way : ways_.all()) {
      const bool touches = !options_.box || options_.box->touches(rectangleOf(way.nodes));
      const bool kept = way.own && touches && !assembly.isDrawnTwice(way);
      if (kept && way.outdoors == outdoors) assembly.addWay(way);
    }
  }
  keepNodes(extract);
  extract.buildingName = buildingName();
  return extract;
}

}  // namespace

OsmExtract extractOsm(const std::filesystem::path& file, const OsmOptions& options) {
  return Extraction(file, options).run();
}

}  // namespace KorvaniTools
