#include "Support/Facade.hpp"

#include "Navigation/API/Constants.hpp"
#include "Platform/GlobalQueue.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/NotificationCenter.hpp"

namespace KorvaniBenchmarks {

using KorvaniNavigation::ConfigDependents;
using KorvaniNavigation::KRVNavGraph;
using KorvaniNavigation::Navigation;

std::shared_ptr<ConfigDependents> mainConfiguration() {
  Navigation& navigation = Navigation::sharedInstance();
  return *navigation.navigationConfigs().find(navigation.defaultConfig()->configName());
}

void provide(const std::shared_ptr<KRVNavGraph>& graph) {
  KorvaniPlatform::setGlobalExecutor(std::make_shared<KorvaniPlatform::MainQueueExecutor>());
  Navigation& navigation = Navigation::sharedInstance();
  navigation.cancelAllTasks();
  pump();
  navigation.provideGraph(graph);
  KorvaniPlatform::NotificationCenter::defaultCenter().post(
      KorvaniNavigation::NavigationGraphCreatedNotification);
}

void pump() { KorvaniPlatform::mainQueue().runUntilIdle(); }

}  // namespace KorvaniBenchmarks
