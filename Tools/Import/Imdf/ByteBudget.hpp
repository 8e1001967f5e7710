#pragma once

/// Internal. Counts the bytes that come out of an archive, and stops at a limit.

#include <cstdint>
#include <string>

namespace KorvaniTools {

class ByteBudget {
 public:
  /// `archive` is what errors call the archive.
  ByteBudget(std::string archive, std::uint64_t limit);

  /// @throws InputError when more than the limit has been taken
  void take(std::uint64_t bytes);

 private:
  std::string archive_;
  std::uint64_t limit_;
  std::uint64_t left_;
};

}  // namespace KorvaniTools
