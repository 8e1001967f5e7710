#include "Platform/UUID.hpp"

#include <cstddef>
#include <mutex>
#include <random>

#include "Platform/Clock.hpp"

namespace KorvaniPlatform {

namespace {

// One generator for all threads, so that no two of them can walk through the same numbers. The
// clock is mixed into the seed for platforms whose random device always says the same.
class Generator {
 public:
  Generator() {
    std::random_device device;
    const auto now = static_cast<std::uint64_t>(SystemClock().uptime().count());
    std::seed_seq seed{device(),
                       device(),
                       device(),
                       device(),
                       device(),
                       device(),
                       static_cast<unsigned>(now),
                       static_cast<unsigned>(now >> 32)};
    engine_.seed(seed);
  }

  template <std::size_t N>
  void fill(std::array<std::uint8_t, N>& bytes) {
    const std::lock_guard lock(mutex_);
    for (std::size_t start = 0; start < N; start += 8) {
      const std::uint64_t word = engine_();
      for (std::size_t i = start; i < start + 8 && i < N; ++i) {
        bytes[i] = static_cast<std::uint8_t>(word >> (8 * (i - start)));
      }
    }
  }

 private:
  std::mutex mutex_;
  std::mt19937_64 engine_;
};

Generator& generator() {
  static auto* const shared = new Generator;
  return *shared;
}

}  // namespace

UUID UUID::random() {
  Bytes bytes{};
  generator().fill(bytes);
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4: random
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // variant of RFC 4122
  return UUID(bytes);
}

std::string UUID::uuidString() const {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[bytes_[i] >> 4];
    text += kDigits[bytes_[i] & 0x0F];
  }
  return text;
}

}  // namespace KorvaniPlatform
