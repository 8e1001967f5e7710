#include "Navigation/Graph/GraphChanges.hpp"

namespace KorvaniNavigation {

GraphChanges& graphChanges() {
  static auto* const changes = new GraphChanges();
  return *changes;
}

}  // namespace KorvaniNavigation
