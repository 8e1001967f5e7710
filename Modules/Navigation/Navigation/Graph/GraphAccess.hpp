#pragma once

// Internal. What lets forms compiled from a graph be kept until the graph changes.
//
// A form is made from many objects, and is right as long as none of them changes. Containers of the
// graph count their changes themselves. Points, edges, obstacles and regions are too many to be
// asked one by one, and many of them belong to no graph at all (positions, routes), so whoever
// compiles a form watches the objects it reads: from then on their setters stamp a revision, one
// for each kind of change.
//
//   const RevisionStamp stamp = GraphAccess::structureStamp(graph);   // first the stamp,
//   GraphAccess::watch(*edge, graph);                                 // then watch,
//   use(edge->end());                                                 // then read
//
// What is watched for a graph stamps revisions of that graph, so that a change of one building
// leaves what is compiled from another. What two graphs watch, and what is watched for a form that
// belongs to no graph, stamps revisions that are everybody's: they are in the stamps of all graphs.
// Edges are part of graphs alone; points of a region's form or a route are everybody's.
//
// Thread safety: any thread at any time.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Common/Derived.hpp"
#include "Common/Revision.hpp"

namespace KorvaniNavigation {

class KRVNavEdge;
class KRVNavGraph;
class KRVNavObstacle;
class KRVNavPoint;
class KRVNavRegion;

using KorvaniCommon::Derived;
using KorvaniCommon::RevisionStamp;

struct GraphAccess {
  // For everybody.
  static void watch(const KRVNavObstacle& obstacle);
  static void watch(const KRVNavPoint& point);
  // For a form of the graph.
  static void watch(const KRVNavEdge& edge, const KRVNavGraph& graph);
  static void watch(const KRVNavPoint& point, const KRVNavGraph& graph);
  static void watch(const KRVNavRegion& region, const KRVNavGraph& graph);

  // What an edge holds beside its numbers, read in one step.
  struct EdgeParts {
    std::shared_ptr<KRVNavPoint> start;
    std::shared_ptr<KRVNavPoint> end;
    std::optional<std::string> type;
  };
  static EdgeParts partsOf(const KRVNavEdge& edge);

  // Whether the point has a region, without taking hold of it.
  static bool hasRegion(const KRVNavPoint& point);

  // The number under which the point stands in what was compiled last from its graph; kNoPlace
  // before. A hint that saves a look-up: whoever takes it checks it.
  static constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;
  static std::uint32_t place(const KRVNavPoint& point);
  static void setPlace(const KRVNavPoint& point, std::uint32_t place);

  // Where forms compiled from the object are kept.
  static const Derived& derivedOf(const KRVNavGraph& graph);
  static const Derived& derivedOf(const KRVNavRegion& region);

  // When the graph last changed which nodes there are and which edges join them.
  static RevisionStamp structureStamp(const KRVNavGraph& graph);
  // The same, or what an edge of it costs.
  static RevisionStamp costStamp(const KRVNavGraph& graph);
  // When the region last changed which nodes it has and where they are.
  static RevisionStamp nodesStamp(const KRVNavRegion& region);
  // When a point that is watched for everybody last changed what can be asked of it.
  static RevisionStamp pointsStamp();
  // When an obstacle last changed its coordinates.
  static RevisionStamp obstaclesStamp();
};

}  // namespace KorvaniNavigation
