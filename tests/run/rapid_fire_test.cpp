#include "run/rapid_fire.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/station.h"

namespace skypost::testing {
namespace {

constexpr std::int64_t START = 1'700'000'000;

settings_record settings_with(std::int32_t wunderground, std::int32_t weatherflow, bool windit) {
  settings_record settings{};
  set_rapid_fire(settings, wunderground, weatherflow);
  settings.set_integer(windit_enabled, windit);
  return settings;
}

using times = std::vector<std::int64_t>;

// The times of each network's uploads, in seconds from the start, if a pass takes `work` seconds besides its sleep.
std::vector<times> simulate(const settings_record& settings, std::int64_t duration, std::int64_t work = 0) {
  std::vector<times> sent(std::size(RAPID_FIRE_NETWORKS));
  rapid_fire_stamps stamps{START, START, START};
  for (std::int64_t now = START; now <= START + duration; now += pass_length(settings) + work)
    for (std::size_t i = 0; i < sent.size(); ++i)
      if (take_turn(RAPID_FIRE_NETWORKS[i], settings, stamps[i], now)) sent[i].push_back(now - START);
  return sent;
}

TEST(RapidFire, SendsEachNetworkOnItsOwnSchedule) {
  constexpr std::int32_t FOREVER = std::numeric_limits<std::int32_t>::max();
  struct schedule_case {
    std::int32_t wunderground;  // interval in seconds, 0 for off
    std::int32_t weatherflow;
    bool windit;
    std::int64_t work;
    std::int32_t pass_length;
    std::vector<times> sent;  // in the first 60 seconds
    const integer_field* off = nullptr;
  };
  const schedule_case cases[] = {
      // clang-format off
      {0,       0,  false, 0, 30, {{}, {}, {}}},
      {0,       0,  true,  0, 10, {{}, {}, {10, 20, 30, 40, 50, 60}}},
      {0,       0,  true,  3, 10, {{}, {}, {13, 26, 39, 52}}},
      {15,      0,  true,  0, 10, {{20, 40, 60}, {}, {10, 20, 30, 40, 50, 60}}},
      {5,       0,  true,  0,  5, {{5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60}, {}, {10, 20, 30, 40, 50, 60}}},
      {0,       30, true,  0, 10, {{}, {30, 60}, {10, 20, 30, 40, 50, 60}}},
      {0,       45, false, 0, 30, {{}, {60}, {}}},
      {20,      12, false, 0, 12, {{24, 48}, {12, 24, 36, 48, 60}, {}}},
      {-5,      0,  false, 0, 30, {{30, 60}, {}, {}}},
      {0,       -5, false, 0, 30, {{}, {30, 60}, {}}},
      {FOREVER, 40, false, 0, 30, {{}, {60}, {}}},
      {5,       0,  false, 0, 30, {{}, {}, {}}, &wunderground_enabled},
      {5,       0,  false, 0, 30, {{}, {}, {}}, &wunderground_rapid_enabled},
      {0,       5,  false, 0, 30, {{}, {}, {}}, &weatherflow_enabled},
      {0,       5,  false, 0, 30, {{}, {}, {}}, &weatherflow_rapid_enabled},
      // clang-format on
  };
  for (const schedule_case& row : cases) {
    SCOPED_TRACE(std::to_string(row.wunderground) + " " + std::to_string(row.weatherflow));
    settings_record settings = settings_with(row.wunderground, row.weatherflow, row.windit);
    if (row.off != nullptr) settings.set_integer(*row.off, 0);
    make_intervals_valid(settings);
    EXPECT_EQ(pass_length(settings), row.pass_length);
    EXPECT_EQ(is_any_rapid_fire_active(settings), row.sent != std::vector<times>(3));
    EXPECT_EQ(simulate(settings, 60, row.work), row.sent);
  }
}

// After the clock is set back, the old stamp is in the future; waiting for it could take years.
TEST(RapidFire, SendsAtOnceAfterTheClockWasSetBack) {
  const settings_record settings = settings_with(30, 0, false);
  struct clock_case {
    std::int64_t ahead;  // seconds that the stamp is ahead of the clock
    bool is_sent;
  };
  for (const clock_case row :
       {clock_case{-30, true}, {-29, false}, {0, false}, {100, false}, {101, true}, {1'000'000'000, true}}) {
    std::int64_t last = START + row.ahead;
    EXPECT_EQ(take_turn(RAPID_FIRE_NETWORKS[0], settings, last, START), row.is_sent) << row.ahead;
    EXPECT_EQ(last, row.is_sent ? START : START + row.ahead);
  }
}

}  // namespace
}  // namespace skypost::testing
