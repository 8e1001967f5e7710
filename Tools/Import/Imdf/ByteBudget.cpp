#include "Import/Imdf/ByteBudget.hpp"

#include <utility>

#include "Support/InputError.hpp"

namespace KorvaniTools {

ByteBudget::ByteBudget(std::string archive, std::uint64_t limit)
    : archive_(std::move(archive)), limit_(limit), left_(limit) {}

void ByteBudget::take(std::uint64_t bytes) {
  if (bytes > left_) {
    throw InputError(archive_ + ": found more than " + std::to_string(limit_) +
                     " bytes in its files, expected at most that many");
  }
  left_ -= bytes;
}

}  // namespace KorvaniTools
