#pragma once

// Internal. What a path search starts from, leads to, and how long it may take.

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "Navigation/Localisation/Intersection.hpp"
#include "Platform/MainQueue.hpp"

namespace KorvaniNavigation {

class ConfigDependents;
class KRVNavPoint;
class PositionMapper;

/// The nodes a search starts from, each with its distance in metres from the place the person
/// was mapped to.
struct SearchStart {
  std::vector<std::shared_ptr<KRVNavPoint>> nodes;
  std::vector<double> distances;
};

/// The node itself for a place on a node, both ends of the edge for a place on an edge.
SearchStart searchStartOf(const std::shared_ptr<Intersection>& intersection);

/// Which walls hide graph nodes from a destination.
enum class DestinationWalls {
  held,  ///< those that the mapper holds, which are the ones around the start
  own,   ///< those of the destination's region
};

/// The nodes near each destination, at most four of each, in the order of the destinations. A
/// node may be there twice. Fatal error for a destination without any region.
std::vector<std::shared_ptr<KRVNavPoint>> destinationNodes(
    const std::vector<std::shared_ptr<KRVNavPoint>>& possibleDestinations,
    const std::weak_ptr<ConfigDependents>& configuration, PositionMapper& mapper,
    DestinationWalls walls);

/// Ten seconds on the main run loop, after which something happens, unless it is invalidated
/// first. Once `invalidate()` has returned nothing happens any more, also when the timer was
/// not even made yet or is firing on the main thread at that moment.
///
/// Any thread may call it.
class SearchTimeLimit : public std::enable_shared_from_this<SearchTimeLimit> {
 public:
  static constexpr std::chrono::seconds kLimit{10};

  /// Has the main queue make the timer; `onExpiry` runs on the main thread and must be short.
  static std::shared_ptr<SearchTimeLimit> arm(std::function<void()> onExpiry);

  void invalidate();

 private:
  explicit SearchTimeLimit(std::function<void()> onExpiry);
  void schedule();
  void expire();

  std::mutex mutex_;
  bool valid_ = true;
  std::function<void()> onExpiry_;
  std::shared_ptr<KorvaniPlatform::Timer> timer_;
};

}  // namespace KorvaniNavigation
