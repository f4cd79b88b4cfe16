#include "live/report_parser.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>

#include "base/debug.h"
#include "live/live_record.h"
#include "live/live_table.h"
#include "settings/record.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// Loads reports into the process-wide live record.
class LoadedReport : public ::testing::Test {
 protected:
  LoadedReport() {
    setenv("TZ", "Europe/Berlin", 1);
    station_settings = sensors_of_the_report();
  }
  ~LoadedReport() override {
    station_settings = {};
    live_data_stale = debug_flag = 0;
  }
};

void expect_nothing_known() {
  for (const live_row& row : LIVE_TABLE) {
    if (!row.has_sensor()) continue;
    SCOPED_TRACE(row.key);
    constexpr live_number HEIGHT = &LiveRecord::height;
    const bool is_zero = row.kind == value_kind::time || row.number == HEIGHT;
    if (!row.number.is_none()) {
      EXPECT_EQ(row.number.of(live_record), is_zero ? 0 : MISSING_VALUE);
    }
    if (row.text != nullptr) {
      EXPECT_STREQ(live_record.*row.text, row.kind == value_kind::time ? "---" : "");
    }
  }
}

TEST_F(LoadedReport, ForgetsWhatTheNextDoesNotSay) {
  for (const char* report : {"", "<html>404 not found</html>", "actual_th9_temp_c 21.5\n"}) {
    load_live_record(full_report().c_str());
    EXPECT_STREQ(live_record.sunrise, "05:41");
    load_live_record(report);
    expect_nothing_known();
    EXPECT_STREQ(live_record.sunrise, "---");
    EXPECT_STREQ(live_record.sunset, "---");
  }
  station_settings = {};  // no sensor is selected
  load_live_record(full_report().c_str());
  expect_nothing_known();
}

std::string value_of(const live_row& row, const LiveRecord& live) {
  std::string value = row.text != nullptr ? live.*row.text : "";
  if (!row.number.is_none()) value += (value.empty() ? "" : " ") + std::to_string(row.number.of(live));
  return value;
}

// Each case is changes to the full report, or a report of its own. Its result is the values that differ from those of
// the full report, or from missing ones.
TEST_F(LoadedReport, HasTheValuesOfTheGoldenText) {
  expect_cases("live/golden/records", [](const std::string& one) {
    std::string report = full_report();
    std::string key, value, differences;
    std::istringstream words(one);
    while (words >> key >> std::quoted(value, '"', '\0'))
      if (key == "report")
        report = without_escapes(value);
      else
        EXPECT_TRUE(replace_value(report, key, value)) << key;
    const bool is_whole = key == "report";
    load_live_record(is_whole ? "" : full_report().c_str());
    const LiveRecord before = live_record;
    live_data_stale = 0;
    load_live_record(report.c_str());
    for (const live_row& row : LIVE_TABLE) {
      const std::string now = value_of(row, live_record);
      if (now == value_of(row, before)) continue;
      const std::string sensor(station_settings.text(row.sensor));
      differences += (differences.empty() ? "" : ", ") + replaced(row.key, "%s", sensor) + ": " + now;
    }
    return differences + (live_data_stale != 0 && !is_whole ? ", stale" : "");
  });
}

TEST_F(LoadedReport, PrintsItsMainValuesInDebugMode) {
  for (const std::int32_t debug : {0, 1}) {
    debug_flag = debug;
    ::testing::internal::CaptureStderr();
    load_live_record(full_report().c_str());
    const std::string output = ::testing::internal::GetCapturedStderr();
    if (debug == 0)
      EXPECT_EQ(output, "");
    else
      expect_golden("live/golden/debug_output", output);
  }
  // Without the dew point, the other outdoor values count as missing too.
  ::testing::internal::CaptureStderr();
  load_live_record("actual_th0_temp_c 21.25\nactual_th1_hum_rel 55\n");
  EXPECT_TRUE(
      ::testing::internal::GetCapturedStderr().starts_with("temp10: -9999\nhum: -9999\ndew10: -9999\n"));
}

}  // namespace
}  // namespace skypost::testing
