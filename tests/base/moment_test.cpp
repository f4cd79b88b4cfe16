#include "base/moment.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace skypost::testing {
namespace {

// The owner may change the time zone while the rapid-fire loop runs.
TEST(Moment, FollowsTheZoneOfTheCall) {
  constexpr std::time_t MIDSUMMER = 1'719'792'000;  // 2024-07-01 00:00 UTC
  setenv("TZ", "UTC0", 1);
  EXPECT_EQ(moment_at(MIDSUMMER).local.tm_hour, 0);
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  const moment summer = moment_at(MIDSUMMER);
  EXPECT_EQ(summer.local.tm_hour, 2);
  EXPECT_EQ(summer.utc.tm_hour, 0);
  EXPECT_EQ(moment_at(MIDSUMMER - 182 * 86'400).local.tm_hour, 1);
}

}  // namespace
}  // namespace skypost::testing
