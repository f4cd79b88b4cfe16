#include "live/report_parser.h"

#include <gtest/gtest.h>

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

TEST(ReportParser, TruncatesWordsToTheirField) {
  const LiveRecord live = parsed(
      "actual_wind0_dir_de 123456789012345\nactual_wind0_dir_en 12345678901\n"
      "actual_sunrise_standard_local 2024-06-17T04:43\nactual_sunset_standard_local");
  EXPECT_STREQ(live.winddirstr, "12345678901");
  EXPECT_STREQ(live.winddirstren, "12345678901");
  EXPECT_STREQ(live.sunrise, "2024-06-17T");
  EXPECT_STREQ(live.sunset, "---");
  EXPECT_STREQ(parsed("actual_wind0_dir_de ").winddirstr, "");
}

// Each line of the golden text has a time from a report, the time of day, and the seconds since the epoch.
TEST(ReportParser, ReadsTimes) {
  std::istringstream lines(read_whole_file(TESTS_DIRECTORY "/live/golden/times"));
  std::ostringstream found;
  for (std::string time, rest; lines >> std::quoted(time) && std::getline(lines, rest);) {
    const LiveRecord live = parsed("day1_th0_tempmax_time " + time);
    found << std::quoted(time) << ' ' << live.todaymaxtemptimestr << ' ' << live.todaymaxtemptime << '\n';
  }
  expect_golden("live/golden/times", found.str());
}

TEST(ReportParser, ReadsTheValueAfterTheFirstOccurrenceOfTheKey) {
  using namespace std::literals;
  struct report_case {
    std::string report;
    std::int32_t temperature;
  };
  const report_case cases[] = {
      {"actual_th0_temp_cx 5\nactual_th0_temp_c 21.3\n", 50},
      {"month1_actual_th0_temp_c 6\nactual_th0_temp_c 21.3\n", 60},
      {"actual_th0_temp_c 1\nactual_th0_temp_c 2\n", 10},
      {"actual_th0_temp_c ---\nactual_th0_temp_c 2\n", MISSING_VALUE},
      {"actual_th0_temp_c=7 8", 80},
      {"actual_th0_temp_c \t\v\f\r\n 4", 40},
      {"actual_th0_temp_c", MISSING_VALUE},
      {"actual_th0_temp_c\n \n", MISSING_VALUE},
      {"actual_th0_temp_", MISSING_VALUE},
      {"actual_th0_hum_rel 1\0actual_th0_temp_c 5"s, MISSING_VALUE},
      {"actual_th0_temp_c\0 5"s, MISSING_VALUE},
      {"actual_th0_temp_c 1\0002"s, 10},
      {std::string(490'000, 'a') + "ctual_th0_temp_c 9", 90},
  };
  for (const report_case& row : cases) {
    EXPECT_EQ(parsed(row.report).temp10, row.temperature) << row.report.substr(0, 100);
  }
}

// A current value, and whether it widens its extremes.
struct quantity {
  std::string name;
  std::string unit;
  std::int32_t LiveRecord::*current;
  bool widens = true;
};

const quantity QUANTITIES[] = {
    // clang-format off
    {"th0_temp",        "_c",   &LiveRecord::temp10},
    {"th2_dew",         "_c",   &LiveRecord::dew10},
    {"th1_hum",         "_rel", &LiveRecord::hum},
    {"thb0_sealevel",   "_hpa", &LiveRecord::sealevel10},
    {"wind0_chill",     "_c",   &LiveRecord::chill10},
    {"uv0_index",       "",     &LiveRecord::uv10},
    {"sol0_radiation",  "_wqm", &LiveRecord::solar10},
    {"wind0_gustspeed", "_ms",  &LiveRecord::gust10},
    {"wind0_speed",     "_ms",  &LiveRecord::wind10, false},
    {"rain0_rate",      "_mm",  &LiveRecord::rain,   false},
    // clang-format on
};

void expect_same(const LiveRecord& found, const LiveRecord& expected) {
  for (const live_row& row : LIVE_TABLE) {
    SCOPED_TRACE(row.key);
    if (!row.number.is_none()) {
      EXPECT_EQ(row.number.of(found), row.number.of(expected));
    }
    if (row.text != nullptr) {
      EXPECT_STREQ(found.*row.text, expected.*row.text);
    }
  }
}

// A report with this current value and without one extreme must be read like one with the value as its extremes.
void expect_widened(const quantity& row, const std::string& value, const std::string& missing_period,
                    const std::string& missing_end) {
  SCOPED_TRACE(row.name + " = " + value + ", without " + missing_period + missing_end);
  std::string report = full_report();
  const bool is_missing = replace_value(report, missing_period + row.name + missing_end + row.unit, "---");
  std::string widened = report;
  replace_value(report, "actual_" + row.name + row.unit, value);
  replace_value(widened, "actual_" + row.name + row.unit, "---");
  for (const std::string period : {"day1_", "month1_", "year1_"}) {
    // If one extreme of a pair is missing, neither is widened. The day's highest gust is set even if it is missing.
    const bool is_known =
        !is_missing || period != missing_period || period + row.name == "day1_wind0_gustspeed";
    if (row.widens && value != "---" && is_known)
      replace_value(widened, period + row.name + (value[0] == '-' ? "min" : "max") + row.unit, value);
  }
  LiveRecord expected = parsed(widened);
  const LiveRecord found = parsed(report);
  expected.*row.current = found.*row.current;
  expect_same(found, expected);
}

TEST(ReportParser, WidensTheExtremesThatTheCurrentValuePassed) {
  for (const quantity& row : QUANTITIES)
    for (const char* const value : {"2000", "-2000", "---"})
      for (const char* const period : {"day1_", "month1_", "year1_"})
        for (const char* const missing : {"none", "max", "min"}) expect_widened(row, value, period, missing);
}

// Loads reports into the process-wide live record.
class LoadedReport : public ::testing::Test {
 protected:
  LoadedReport() { station_settings = sensors_of_the_report(); }
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

TEST_F(LoadedReport, HasAllOutdoorValuesOrNone) {
  for (const std::string missing : {"", "actual_th0_temp_c", "actual_th1_hum_rel", "actual_th2_dew_c"}) {
    SCOPED_TRACE(missing);
    std::string report = full_report();
    replace_value(report, missing, "---");
    live_data_stale = 0;
    load_live_record(report.c_str());
    EXPECT_EQ(live_data_stale, missing.empty() ? 0 : 1);
    for (const std::int32_t value : {live_record.temp10, live_record.hum, live_record.dew10})
      EXPECT_EQ(known(value), missing.empty());
  }
}

TEST_F(LoadedReport, KeepsWhatAnOutdoorValueHasWidenedWhenItFallsWithAnother) {
  std::string report = full_report();
  replace_value(report, "actual_th0_temp_c", "2000");
  replace_value(report, "actual_th2_dew_c", "---");
  load_live_record(report.c_str());
  EXPECT_EQ(live_record.temp10, MISSING_VALUE);
  EXPECT_EQ(live_record.todaymaxtemp10, 20'000);
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
