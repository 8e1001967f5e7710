#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "Platform/Export.hpp"

/// Identifiers that no two objects share.
///
///     UUID identifier = UUID::random();
///     identifier.uuidString();          // "6F1C0A52-9A0E-4B7D-8D4B-2C7E1F5A9B33"
///
/// Thread safety: values; `random` may be called from any thread.

namespace KorvaniPlatform {

class KORVANI_API UUID {
 public:
  /// A fresh identifier, version 4 (RFC 4122): 122 random bits.
  static UUID random();

  /// The usual text form: 32 upper-case hexadecimal digits in groups of 8, 4, 4, 4 and 12.
  std::string uuidString() const;

  friend bool operator==(const UUID& a, const UUID& b) { return a.bytes_ == b.bytes_; }

  /// Some total order, for keys of sorted containers: that of the text forms.
  friend bool operator<(const UUID& a, const UUID& b) { return a.bytes_ < b.bytes_; }

 private:
  using Bytes = std::array<std::uint8_t, 16>;

  explicit UUID(const Bytes& bytes) : bytes_(bytes) {}

  Bytes bytes_;
};

}  // namespace KorvaniPlatform
