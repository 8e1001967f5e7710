#include <ostream>

#include "Integration/RealMaps.hpp"
#include "Tools/WalkReplay.hpp"

namespace KorvaniTest {
namespace {

struct WalkCase {
  const char* map;
  const char* from;
  const char* to;

  friend std::ostream& operator<<(std::ostream& stream, const WalkCase& walk) {
    return stream << walk.map << ": " << walk.from << " to " << walk.to;
  }
};

/// Walks through real buildings, with and without what positioning systems get wrong.
class RealWalks : public RealMaps, public testing::WithParamInterface<WalkCase> {
 protected:
  RealWalks() : RealMaps(GetParam().map) {}
};

TEST_P(RealWalks, ArriveInAReplay) {
  for (const auto& options : walksOfAllKinds()) {
    EXPECT_TRUE(arrives(simulated(building(), GetParam().from, GetParam().to, options), building()))
        << "seed " << options.seed;
  }
}

constexpr auto kCongressCentre = "cch-32c3-graph/cch.building.geojson";
constexpr auto kCampus = "spb-polytech-imdf/spb.building.geojson";

INSTANTIATE_TEST_SUITE_P(CongressCentre, RealWalks,
                         testing::Values(WalkCase{kCongressCentre, "Forecourt", "Cloakroom"},
                                         WalkCase{kCongressCentre, "Hall 4", "Subtitles"},
                                         WalkCase{kCongressCentre, "Hall A.1 A.2", "Lounge"}));

INSTANTIATE_TEST_SUITE_P(Campus, RealWalks,
                         testing::Values(WalkCase{kCampus, "Classroom 102", "Classroom 510"},
                                         WalkCase{kCampus, "Ticket office", "Auditorium 324"}));

}  // namespace
}  // namespace KorvaniTest
