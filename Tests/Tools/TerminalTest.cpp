#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tools/BuildingText.hpp"
#include "Tools/Process.hpp"

namespace KorvaniTest {
namespace {

using testing::HasSubstr;
using testing::Not;

class Terminal : public testing::Test {
 protected:
  Outcome info(const std::vector<std::pair<std::string, std::string>>& environment) const {
    return runToolOnTerminal({"info", file_.path()}, environment);
  }

  const TemporaryFile file_{buildingText({nodeAt(1, 0, 11, 48)}, R"("name":"Town Hall")")};
};

TEST_F(Terminal, IsColoured) {
  const Outcome outcome = info({{"TERM", "xterm"}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\x1b[1mTown Hall\x1b[0m"));
}

TEST_F(Terminal, IsNotColouredAgainstThePersonsWish) {
  const Outcome outcome = info({{"TERM", "xterm"}, {"NO_COLOR", "1"}});
  EXPECT_THAT(outcome.output, HasSubstr("Town Hall"));
  EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
}

TEST_F(Terminal, AnEmptyWishIsNone) {
  EXPECT_THAT(info({{"TERM", "xterm"}, {"NO_COLOR", ""}}).output, HasSubstr("\x1b"));
}

TEST_F(Terminal, ThatKnowsNoCodesGetsNone) {
  EXPECT_THAT(info({{"TERM", "dumb"}}).output, Not(HasSubstr("\x1b")));
}

}  // namespace
}  // namespace KorvaniTest
