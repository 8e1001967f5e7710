#pragma once

// Internal. The labels of the search in waves, object by object, and the waves that improve them.
//
// This is the search as the finder promises it, for graphs of any kind. The finder answers from
// arrays where it can, and comes here where it cannot: when labels of point objects and equality of
// points come apart, when a search goes on from the labels of another one, and when somebody asks
// for a label after a search that kept none.
//
// Belongs to one thread, but for the flag that interrupts.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "Navigation/Path Finding/Arrays/CompiledGraph.hpp"
#include "Navigation/Path Finding/Arrays/Interruption.hpp"
#include "Navigation/Path Finding/DijkstraImproved/PointPath.hpp"
#include "Navigation/Path Finding/DijkstraImproved/PointSet.hpp"

namespace KorvaniNavigation {

class WaveLabels {
 public:
  using Path = PointPath;
  using Points = std::vector<std::shared_ptr<KRVNavPoint>>;

  // The edges as they were when a graph was compiled. The numbers of its points are its own: those
  // that the points remember may be of a later form by now. Of no use when the interruption is
  // seen.
  struct CompiledEdges {
    CompiledEdges(const CompiledGraph& compiled, Interruption& interruption);

    const CompiledGraph& graph;
    std::unordered_map<const KRVNavPoint*, std::uint32_t> nodes;
  };

  // What a search goes by. Without compiled edges the points are asked for theirs. With them,
  // points are told apart as objects, which in the graph as it was compiled is the same as
  // equality; so the destinations must be a set of objects as well.
  struct Rules {
    const PointSet& destinations;
    bool lookForBarrierFreeRoute = false;
    const std::atomic<bool>& interrupted;
    const CompiledEdges* compiled = nullptr;
  };

  // Labels a start point, and has the next wave begin with it.
  void addStart(const std::shared_ptr<KRVNavPoint>& point, double distance);

  // Waves until no label improves any more. False when a wave was interrupted.
  bool run(const Rules& rules);

  // One wave. False when it was interrupted: it has given up then.
  bool wave(const Rules& rules);

  // Forgets the best path and leaves no points for the next wave.
  void giveUp();

  // Forgets everything.
  void clear();

  // Whether nothing was searched since the last clear().
  bool isEmpty() const { return paths_.empty(); }

  std::optional<Path> bestPath() const;
  std::optional<Path> pathTo(const KRVNavPoint& point) const;
  const Points& nodesToCheck() const { return nodesToCheck_; }

 private:
  using PathIndex = std::size_t;
  struct Wave;

  // A path is kept as its last point and the path it prolongs. Entries never change, so that a
  // label that improves later leaves the ways through it as they were.
  struct PathEnd {
    std::shared_ptr<KRVNavPoint> node;
    std::optional<PathIndex> before;
    double distance;
  };

  void expand(const KRVNavPoint& point, const Rules& rules, Interruption& interruption, Wave& next);
  void expandInArrays(const KRVNavPoint& point, const Rules& rules, Interruption& interruption,
                      Wave& next);
  void relax(const KRVNavPoint& point, const std::shared_ptr<KRVNavPoint>& end, double cost,
             const Rules& rules, Wave& next);
  PathIndex appendPath(PathEnd path);
  std::optional<PathIndex> find(const KRVNavPoint& point) const;
  Path spelledOut(PathIndex index) const;

  std::vector<PathEnd> paths_;
  std::unordered_map<const KRVNavPoint*, PathIndex> pathStore_;
  Points nodesToCheck_;
  std::optional<PathIndex> bestPath_;
};

}  // namespace KorvaniNavigation
