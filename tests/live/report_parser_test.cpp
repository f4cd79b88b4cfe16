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
  ::testing::internal::CaptureStderr();
  load_live_record(full_report().c_str());
  debug_flag = 1;
  load_live_record(full_report().c_str());
  expect_golden("live/golden/debug_output", ::testing::internal::GetCapturedStderr());
  // Without the dew point, the other outdoor values count as missing too.
  ::testing::internal::CaptureStderr();
  load_live_record("actual_th0_temp_c 21.25\nactual_th1_hum_rel 55\n");
  EXPECT_TRUE(
      ::testing::internal::GetCapturedStderr().starts_with("temp10: -9999\nhum: -9999\ndew10: -9999\n"));
}

}  // namespace
}  // namespace skypost::testing
