#include "Platform/MainQueueExecutor.hpp"

#include "Platform/MainQueue.hpp"

namespace KorvaniPlatform {

void MainQueueExecutor::execute(Job job) { mainQueue().async(takeJob(job)); }

}  // namespace KorvaniPlatform
