#pragma once

#include "Platform/Executor.hpp"
#include "Platform/Export.hpp"

/// Runs background work on the main queue: the engine without threads.
///
/// Installed as the global executor it makes everything happen on the thread that pumps the main
/// queue, in order, which suits a browser page and reproducible replays:
///
///     setGlobalExecutor(std::make_shared<MainQueueExecutor>());
///
/// Builds with `KORVANI_SINGLE_THREADED` use it by default.
///
/// Thread safety: thread-safe.

namespace KorvaniPlatform {

class KORVANI_API MainQueueExecutor final : public Executor {
 public:
  /// Queues the job on the main queue.
  void execute(Job job) override;
};

}  // namespace KorvaniPlatform
