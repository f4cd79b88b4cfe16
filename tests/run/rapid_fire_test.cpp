// The schedule of the rapid-fire loop, simulated, and the loop itself with its sleeps taken out.

#include "run/rapid_fire.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "base/paths.h"
#include "base/process_state.h"
#include "run/settings_attempts.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace {

void (*on_sleep)(unsigned seconds) = nullptr;

}  // namespace

// Stands in for the C library's, so that the loop under test can run without its pauses.
extern "C" unsigned sleep(unsigned seconds) {
  if (on_sleep != nullptr)
    on_sleep(seconds);
  else
    usleep(seconds * 1'000'000);
  return 0;
}

namespace skypost::testing {
namespace {

constexpr std::int64_t START = 1'700'000'000;

settings_record settings_with(std::int32_t wunderground, std::int32_t weatherflow, bool windit) {
  settings_record settings{};
  settings.set_integer(wunderground_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_interval, wunderground);
  settings.set_integer(weatherflow_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_interval, weatherflow);
  settings.set_integer(windit_enabled, windit);
  return settings;
}

using times = std::vector<std::int64_t>;

// When each network is sent, in seconds from the start, by passes that need `work` seconds beyond their sleep.
std::vector<times> simulate(const settings_record& settings, std::int64_t duration, std::int64_t work = 0) {
  std::vector<times> sent(std::size(RAPID_FIRE_NETWORKS));
  rapid_fire_stamps stamps{START, START, START};
  for (std::int64_t now = START; now <= START + duration; now += pass_length(settings) + work)
    for (std::size_t i = 0; i < sent.size(); ++i)
      if (take_turn(RAPID_FIRE_NETWORKS[i], settings, stamps, now)) sent[i].push_back(now - START);
  return sent;
}

TEST(RapidFire, SendsEachNetworkOnItsOwnSchedule) {
  constexpr std::int32_t FOREVER = std::numeric_limits<std::int32_t>::max();
  struct schedule_case {
    std::int32_t wunderground;  // seconds; 0: not enabled
    std::int32_t weatherflow;
    bool windit;
    std::int64_t work;
    std::int32_t pass_length;
    std::vector<times> sent;  // in the first 60 seconds
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
      {FOREVER, 40, false, 0, 30, {{}, {60}, {}}},
      // clang-format on
  };
  for (const schedule_case& row : cases) {
    SCOPED_TRACE(std::to_string(row.wunderground) + " " + std::to_string(row.weatherflow));
    settings_record settings = settings_with(row.wunderground, row.weatherflow, row.windit);
    make_intervals_valid(settings);
    EXPECT_EQ(pass_length(settings), row.pass_length);
    EXPECT_EQ(is_any_rapid_fire_active(settings), row.sent != std::vector<times>(3));
    EXPECT_EQ(simulate(settings, 60, row.work), row.sent);
  }
}

TEST(RapidFire, LeavesOutANetworkWithOneOfItsSwitchesOff) {
  for (const integer_field* off : {&wunderground_enabled, &wunderground_rapid_enabled, &weatherflow_enabled,
                                   &weatherflow_rapid_enabled}) {
    SCOPED_TRACE(off->name);
    const bool is_wunderground = off == &wunderground_enabled || off == &wunderground_rapid_enabled;
    settings_record settings = is_wunderground ? settings_with(5, 0, false) : settings_with(0, 5, false);
    settings.set_integer(*off, 0);
    EXPECT_FALSE(is_any_rapid_fire_active(settings));
    EXPECT_EQ(pass_length(settings), 30);
    EXPECT_EQ(simulate(settings, 3'600), std::vector<times>(3));
  }
}

// No network is sent before its interval is over, nor more than a pass later, whatever the others do.
TEST(RapidFire, KeepsTheIntervalsForADay) {
  for (const std::int32_t wunderground : {1, 7, 30, 95})
    for (const std::int32_t weatherflow : {2, 11, 61})
      for (const std::int64_t work : {0, 4}) {
        const settings_record settings = settings_with(wunderground, weatherflow, true);
        const std::int64_t intervals[] = {wunderground, weatherflow, 10};
        const std::vector<times> sent = simulate(settings, 86'400, work);
        for (std::size_t i = 0; i < sent.size(); ++i) {
          std::int64_t last = 0;
          for (const std::int64_t time : sent[i]) {
            ASSERT_GE(time - last, intervals[i]);
            ASSERT_LT(time - last, intervals[i] + pass_length(settings) + work);
            last = time;
          }
          ASSERT_GT(last, 86'400 - 200);
        }
      }
}

// One step of the story below at every sleep: logs its length, with the failure text that stands there.
class story {
 public:
  static void tell(unsigned seconds) {
    std::fprintf(stderr, "%u<%s> ", seconds, error_text.c_str());
    switch (++sleeps_) {
      case 1:
        write_settings(settings_with(7, 0, false));
        break;
      case 2:
        // Switched off in memory, or the pass would fetch and send.
        station_settings.set_integer(wunderground_enabled, 0);
        station_settings.set_text(wunderground_id, "KEPT");
        std::filesystem::remove(appliance_->path(SETTINGS_PATH));
        error_text.append_text("why");
        break;
      case 6:
        std::fprintf(stderr, "%s ", station_settings.bytes + wunderground_id.offset);
        write_settings(settings_with(0, -3, false));
        break;
      case 7:
        std::fprintf(stderr, "%d", station_settings.integer(weatherflow_rapid_interval));
        std::_Exit(0);
    }
  }

  static void write_settings(settings_record settings) {
    settings_record complete;
    fill_settings(complete);
    for (const integer_field* field :
         {&wunderground_enabled, &wunderground_rapid_enabled, &wunderground_rapid_interval,
          &weatherflow_enabled, &weatherflow_rapid_enabled, &weatherflow_rapid_interval, &windit_enabled})
      complete.set_integer(*field, settings.integer(*field));
    appliance_->write(SETTINGS_PATH, {reinterpret_cast<const char*>(complete.bytes), sizeof complete.bytes});
  }

  static inline const appliance_folder* appliance_ = nullptr;

 private:
  static inline int sleeps_ = 0;
};

// Settings that change count from the next pass on; settings that vanish are reported, after three
// attempts with a second behind each, and the last good ones stay.
TEST(RapidFire, ReloadsTheSettingsOnEveryPass) {
  const appliance_folder appliance;
  appliance.write_alarm_script();
  story::appliance_ = &appliance;
  station_settings = settings_with(0, 0, false);
  static report_buffer report;
  EXPECT_EXIT(
      {
        on_sleep = story::tell;
        error_text.append_text("left by a pass before");
        run_rapid_fire(report, START);
      },
      ::testing::ExitedWithCode(0), ::testing::Eq("30<> 7<> 1<why> 1<why> 1<why> 30<> KEPT 30<> 30"));
  const std::string name = "Can't read nimbulog settings file (rapid fire)";
  EXPECT_EQ(appliance.alarms(), std::string("skypost") + '\0' + name + '\0' + "why" + '\0');
}

}  // namespace
}  // namespace skypost::testing
