#include "Common/ConfigItemAction.hpp"

#include <gtest/gtest.h>

namespace {

using Action = KorvaniCommon::KRVCommonConfigItemAction;

TEST(KRVCommonConfigItemAction, NumbersTheActionsInOrder) {
  EXPECT_EQ(static_cast<int>(Action::title), 0);
  EXPECT_EQ(static_cast<int>(Action::shortDescription), 1);
  EXPECT_EQ(static_cast<int>(Action::defaultValue), 2);
  EXPECT_EQ(static_cast<int>(Action::getValue), 3);
  EXPECT_EQ(static_cast<int>(Action::setValue), 4);
}

}  // namespace
