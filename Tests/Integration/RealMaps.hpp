#pragma once

/// Routes through buildings that really stand somewhere. The maps are not part of the
/// repository; without them these tests are skipped and say so.

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Support/FacadeFixture.hpp"
#include "Support/RouteSearch.hpp"

namespace KorvaniTest {

/// What can be said about a route without knowing its last bits.
struct RouteFacts {
  bool found = false;                ///< a way on the graph, not a direct line
  std::vector<std::int64_t> levels;  ///< in the order they are walked
  std::set<std::string> kinds;       ///< kinds of the connections used
  double groundMetres = 0;           ///< without what levels add
  std::size_t destination = 0;       ///< index of the destination chosen
  bool barrierFree = true;           ///< nothing on the way is a barrier
  std::string text;                  ///< the instructions, a line each
};

/// A test that works on one building, given by the path of its file below the maps folder.
class RealMaps : public FacadeFixture {
 protected:
  explicit RealMaps(std::string file) : file_(std::move(file)) {}

  void SetUp() override;

  const KorvaniTools::Building& building() const { return *building_; }

  /// The place of that name, or NAME@LEVEL, or LAT,LON,LEVEL.
  KorvaniTools::Spot spot(const std::string& text) const;

  RouteFacts route(const std::string& from, const std::vector<std::string>& to,
                   bool barrierFree = false) const;

  /// Checks what every route that was found must be: whole, and told to the end.
  void expectSound(const RouteFacts& facts, const std::string& destination) const;

 private:
  std::string file_;
  std::optional<KorvaniTools::Building> building_;
};

}  // namespace KorvaniTest
