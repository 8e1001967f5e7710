#pragma once

#include <memory>

#include "Platform/Executor.hpp"
#include "Platform/Export.hpp"
#include "Platform/MainQueueExecutor.hpp"
#include "Platform/ThreadPool.hpp"

/// The global concurrent queue: where tasks do their work.
///
///     globalQueue().execute([task] { task->execute(); });
///
/// By default it is a pool of as many threads as the device has, two at the least, made on first
/// use and never destroyed. A host that has its own pool puts it in place; with a
/// `MainQueueExecutor` the whole engine runs on one thread. Builds with `KORVANI_SINGLE_THREADED`
/// do so by default and never make a thread.
///
/// The order in which jobs begin is the order in which they were queued; how many run at a time is
/// up to the executor.
///
/// Thread safety: every function may be called from any thread.

namespace KorvaniPlatform {

/// The global queue. The reference stays valid for ever; each job goes to the executor that is
/// installed when it is queued. The thread that asks for the queue first counts as the main thread
/// until someone pumps the main queue, so that no worker can be taken for it.
KORVANI_API Executor& globalQueue();

/// Puts another executor in place; null restores the default. Jobs that the former one already
/// took stay with it. The queue holds the executor until it is replaced.
KORVANI_API void setGlobalExecutor(std::shared_ptr<Executor> executor);

/// Waits until the default pool has run its jobs and ends its threads, for instance before the
/// library is unloaded; the next job starts them again. Does nothing for an executor of the
/// host's, nor in builds without threads. Not to be called from a job of the pool.
KORVANI_API void joinGlobalQueue();

}  // namespace KorvaniPlatform
