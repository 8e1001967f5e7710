#include "Import/Osm/AreaAssembly.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

// The library stores an object's text behind the object, which GCC 12 takes for a mistake.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wstringop-overread"
#endif
#include <osmium/area/geom_assembler.hpp>
#include <osmium/builder/osm_object_builder.hpp>
#include <osmium/memory/buffer.hpp>
#include <osmium/osm/area.hpp>
#include <osmium/osm/relation.hpp>
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

namespace KorvaniTools {
namespace {

using Members = std::vector<AreaMember>;
using Ring = std::vector<Coordinate>;

constexpr std::size_t kBufferSize = 4096;

bool isRing(const AreaMember& member) {
  return member.corners.size() > 3 && member.corners.front().node == member.corners.back().node;
}

/// Finds the ways of which an end meets no other way, and those that have such an end once the
/// former are gone. Each way is looked at a few times only, however long the loose chain is.
class LooseEnds {
 public:
  explicit LooseEnds(const Members& members) : members_(members), loose_(members.size(), false) {
    for (std::size_t i = 0; i < members.size(); ++i) {
      if (members[i].corners.size() < 2) {
        loose_[i] = true;
      } else if (!isRing(members[i])) {
        ends_[members[i].corners.front().node].insert(i);
        ends_[members[i].corners.back().node].insert(i);
      }
    }
    for (std::size_t i = 0; i < members.size(); ++i) check(i);
  }

  bool isLoose(std::size_t member) const { return loose_[member]; }

 private:
  bool isAlone(std::int64_t node) const { return ends_.at(node).size() < 2; }

  void check(std::size_t first) {
    std::vector<std::size_t> waiting{first};
    while (!waiting.empty()) {
      const std::size_t i = waiting.back();
      waiting.pop_back();
      if (loose_[i] || isRing(members_[i])) continue;
      const std::int64_t ends[] = {members_[i].corners.front().node,
                                   members_[i].corners.back().node};
      if (!isAlone(ends[0]) && !isAlone(ends[1])) continue;
      loose_[i] = true;
      for (const std::int64_t end : ends) {
        ends_[end].erase(i);
        waiting.insert(waiting.end(), ends_[end].begin(), ends_[end].end());
      }
    }
  }

  const Members& members_;
  std::vector<bool> loose_;
  std::map<std::int64_t, std::set<std::size_t>> ends_;  ///< node and the ways that end there
};

Members withoutLooseEnds(const Members& members) {
  const LooseEnds ends(members);
  Members kept;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (!ends.isLoose(i)) kept.push_back(members[i]);
  }
  return kept;
}

void addWay(osmium::memory::Buffer& buffer, std::int64_t id, const AreaMember& member) {
  {
    osmium::builder::WayBuilder way(buffer);
    way.set_id(id);
    osmium::builder::WayNodeListBuilder nodes(way);
    for (const PlanVertex& corner : member.corners) {
      nodes.add_node_ref(osmium::NodeRef(
          corner.node, osmium::Location(corner.coordinate.longitude, corner.coordinate.latitude)));
    }
  }
  buffer.commit();
}

/// The relation that the assembler asks for; it takes nothing from it but its name.
osmium::memory::Buffer bareRelation() {
  osmium::memory::Buffer buffer(kBufferSize, osmium::memory::Buffer::auto_grow::yes);
  { osmium::builder::RelationBuilder(buffer).set_id(1); }
  buffer.commit();
  return buffer;
}

template <class OsmiumRing>
Ring ringOf(const OsmiumRing& ring) {
  Ring result;
  for (const osmium::NodeRef& node : ring) {
    result.push_back({node.location().lat(), node.location().lon()});
  }
  return result;
}

/// Nodes of inner ways that no other way has.
std::set<std::int64_t> innerNodes(const Members& members) {
  std::set<std::int64_t> inner;
  for (const AreaMember& member : members) {
    if (!member.inner) continue;
    for (const PlanVertex& corner : member.corners) inner.insert(corner.node);
  }
  for (const AreaMember& member : members) {
    if (member.inner) continue;
    for (const PlanVertex& corner : member.corners) inner.erase(corner.node);
  }
  return inner;
}

/// A hole whose outline is missing must not become floor.
bool isLostHole(const osmium::OuterRing& ring, const std::set<std::int64_t>& inner) {
  return std::all_of(ring.begin(), ring.end(),
                     [&inner](const osmium::NodeRef& node) { return inner.contains(node.ref()); });
}

std::vector<std::vector<Ring>> polygonsOf(const osmium::Area& area,
                                          const std::set<std::int64_t>& inner) {
  std::vector<std::vector<Ring>> polygons;
  for (const osmium::OuterRing& outer : area.outer_rings()) {
    if (isLostHole(outer, inner)) continue;
    std::vector<Ring> polygon{ringOf(outer)};
    for (const osmium::InnerRing& hole : area.inner_rings(outer)) polygon.push_back(ringOf(hole));
    polygons.push_back(std::move(polygon));
  }
  return polygons;
}

std::vector<std::vector<Ring>> assembled(const Members& members) {
  osmium::memory::Buffer ways(kBufferSize, osmium::memory::Buffer::auto_grow::yes);
  for (std::size_t i = 0; i < members.size(); ++i) {
    addWay(ways, static_cast<std::int64_t>(i) + 1, members[i]);
  }
  const osmium::memory::Buffer relations = bareRelation();
  osmium::memory::Buffer result(kBufferSize, osmium::memory::Buffer::auto_grow::yes);
  const osmium::area::AssemblerConfig config;  // the assembler refers to it
  osmium::area::GeomAssembler assembler(config);
  if (!assembler(relations.get<osmium::Relation>(0), ways, result)) return {};
  return polygonsOf(result.get<osmium::Area>(0), innerNodes(members));
}

}  // namespace

AssembledArea assembleArea(const Members& members) {
  AssembledArea area;
  Members usable = withoutLooseEnds(members);
  area.incomplete = usable.size() < members.size();
  if (!usable.empty()) area.polygons = assembled(usable);
  if (area.polygons.empty() && !usable.empty()) {
    // Ways that cross each other spoil all of it; the rings that are whole by themselves may do.
    area.incomplete = true;
    usable.erase(std::remove_if(usable.begin(), usable.end(),
                                [](const AreaMember& each) { return !isRing(each); }),
                 usable.end());
    if (!usable.empty()) area.polygons = assembled(usable);
  }
  return area;
}

}  // namespace KorvaniTools
