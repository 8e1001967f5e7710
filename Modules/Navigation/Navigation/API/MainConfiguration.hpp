#pragma once

// Internal. What a configuration bundle asks about the registry that holds it.

#include <string>

namespace KorvaniNavigation {

/// Name of the main configuration. Fatal error when there is none. Defined by the facade, so
/// that bundles need not know it.
std::string mainConfigName();

}  // namespace KorvaniNavigation
