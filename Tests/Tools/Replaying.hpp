#pragma once

/// Replays traces that tests write.

#include <sstream>
#include <string>
#include <vector>

#include "Building/Building.hpp"
#include "Building/BuildingGraph.hpp"
#include "Support/FacadeFixture.hpp"
#include "Trace/Replay.hpp"
#include "Trace/TraceReader.hpp"

namespace KorvaniTest {

/// `{"lat":...,"lon":...,"level":...}`.
inline std::string tracePoint(double latitude, double longitude, std::int64_t level = 0) {
  std::ostringstream text;
  text.precision(17);
  text << "{\"lat\":" << latitude << ",\"lon\":" << longitude << ",\"level\":" << level << '}';
  return text.str();
}

/// A facade for one replay after another; background work is done as the replay says.
class ReplayFixture : public FacadeFixture {
 protected:
  using Events = KorvaniTools::Replay::Events;

  void TearDown() override {
    end();
    FacadeFixture::TearDown();
  }

  /// Begins a replay in that building.
  void begin(const KorvaniTools::Building& building) {
    replay_ = std::make_unique<KorvaniTools::Replay>(makeGraph(building));
  }
  void end() { replay_.reset(); }

  /// The events of the trace's next line.
  Events carryOut(const std::string& line) {
    return replay_->carryOut(KorvaniTools::parseTraceLine(line, "test.trace.ndjson", ++line_));
  }

  /// The only event of the trace's next line.
  KorvaniTools::OrderedJson onlyEvent(const std::string& line) {
    const Events events = carryOut(line);
    EXPECT_EQ(events.size(), 1U) << line;
    return events.size() == 1 ? events.front() : KorvaniTools::OrderedJson::object();
  }

 private:
  std::unique_ptr<KorvaniTools::Replay> replay_;
  std::size_t line_ = 0;
};

}  // namespace KorvaniTest
