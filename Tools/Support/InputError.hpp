#pragma once

#include <stdexcept>

namespace KorvaniTools {

/// Something that the user of a tool gave is wrong; `what()` tells them what and what would be
/// right. Tools print it and end with exit status 2.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace KorvaniTools
