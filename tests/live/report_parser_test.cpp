// The report's text becomes the live record: which key fills which field, how a value is read, which
// extremes are widened, when the outdoor values count as missing.

#include "live/report_parser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "base/debug.h"
#include "live/live_record.h"
#include "live/live_table.h"
#include "settings/record.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

using number_field = std::int32_t LiveRecord::*;

// Numbers only: a text's bytes after its end count as zeros.
std::vector<std::int32_t> numbers_of(LiveRecord live) {
  for (const live_row& row : LIVE_TABLE) {
    if (row.text == nullptr) continue;
    char* const end = std::end(live.*row.text);
    std::fill(std::find(live.*row.text, end, '\0'), end, '\0');
  }
  std::vector<std::int32_t> numbers(sizeof live / sizeof(std::int32_t));
  std::memcpy(numbers.data(), &live, sizeof live);
  return numbers;
}

void expect_live_record(const LiveRecord& expected, const std::string& after) {
  const auto found = numbers_of(live_record);
  const auto wanted = numbers_of(expected);
  for (std::size_t i = 0; i < wanted.size(); ++i)
    ASSERT_EQ(found[i], wanted[i]) << "at offset " << 4 * i << " of the record, after " << after;
}

// Holds every key, no two of one kind with the same value; before them are longer keys that begin like some
// of them.
std::string full_report() { return read_whole_file(TESTS_DIRECTORY "/live/golden/report"); }

LiveRecord station_of_the_report() {
  LiveRecord live = fully_equipped_station();
  // Where that has the same value twice.
  live.gust10 = 101;
  live.indoorhum = 46;
  live.last15mmaxgust10 = 73;
  live.last15mwind10 = 53;
  live.todayhum = 62;
  return live;
}

// Puts other text after a key of the report.
void replace_value(std::string& report, const std::string& key, const std::string& value) {
  const std::size_t place = report.find(key + ' ') + key.size() + 1;
  report.replace(place, report.find('\n', place) - place, value);
}

// A sensor of its own for each role, and Berlin's time.
class ReportParser : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("TZ", "Europe/Berlin", 1);
    constexpr std::pair<const text_field&, const char*> SENSORS[] = {
        {sensor_temp, "th0"},       {sensor_hum, "th1"},        {sensor_dew, "th2"},
        {sensor_press, "thb0"},     {sensor_indoor, "thb1"},    {sensor_rain, "rain0"},
        {sensor_wind, "wind0"},     {sensor_uv, "uv0"},         {sensor_solar, "sol0"},
        {sensor_extra_temp0, "t0"}, {sensor_extra_temp1, "t1"}, {sensor_extra_temp2, "t2"},
        {sensor_extra_temp3, "t3"}, {sensor_extra_temp4, "t4"}, {sensor_extra_temp5, "t5"}};
    for (const auto& [field, sensor] : SENSORS) station_settings.set_text(field, sensor);
    live_data_stale = debug_flag = 0;
    std::memset(&live_record, 0x5a, sizeof live_record);
  }
  void TearDown() override {
    std::memset(&station_settings, 0, sizeof station_settings);
    live_data_stale = debug_flag = 0;
  }
};

TEST_F(ReportParser, FillsEveryFieldFromItsOwnKey) {
  load_live_record(full_report().c_str());
  expect_live_record(station_of_the_report(), "a full report");
  EXPECT_EQ(live_data_stale, 0);
}

TEST_F(ReportParser, ForgetsWhatTheNextReportDoesNotSay) {
  LiveRecord nothing = sparse_station();
  nothing.temp10 = nothing.hum = nothing.dew10 = MISSING_VALUE;
  for (const char* report : {"", "<html>404 not found</html>", "actual_th9_temp_c 21.5\n"}) {
    load_live_record(full_report().c_str());
    load_live_record(report);
    expect_live_record(nothing, report);
  }
  std::memset(&station_settings, 0, sizeof station_settings);  // no sensor is selected
  std::strcpy(nothing.sunrise, "05:41");
  std::strcpy(nothing.sunset, "20:37");
  load_live_record(full_report().c_str());
  expect_live_record(nothing, "a report of other sensors");
}

TEST_F(ReportParser, CutsWordsToTheirField) {
  load_live_record(
      "actual_wind0_dir_de 123456789012345\nactual_wind0_dir_en 12345678901\n"
      "actual_sunrise_standard_local 2024-06-17T04:43\nactual_sunset_standard_local");
  EXPECT_STREQ(live_record.winddirstr, "12345678901");
  EXPECT_STREQ(live_record.winddirstren, "12345678901");
  EXPECT_STREQ(live_record.sunrise, "2024-06-17T");
  EXPECT_STREQ(live_record.sunset, "---");
  load_live_record("actual_wind0_dir_de ");
  EXPECT_STREQ(live_record.winddirstr, "");
}

TEST_F(ReportParser, ReadsTimes) {
  struct time_case {
    const char* token;
    const char* time_of_day;
    std::int32_t seconds;
  };
  constexpr time_case CASES[] = {
      {"20240617143512", "14:35", 1'718'627'712},
      {"20240117143512", "14:35", 1'705'498'512},      // winter time
      {"20241301003000", "00:30", 1'735'687'800},      // 2025-01-01
      {"20240230120000", "12:00", 1'709'290'800},      // 2024-03-01
      {"20240617143512999x", "14:35", 1'718'627'712},  // 14 digits and more
      {"20500101000000", "00:00", 0},                  // its seconds fit no field
      {"2024061714351", "---", 0},
      {"202406171435x2", "---", 0},
      {"-20240617143512", "---", 0},
      {"1435", "---", 0},
      {"---", "---", 0},
      {"", "---", 0},
  };
  for (const time_case& row : CASES) {
    load_live_record((std::string("day1_th0_tempmax_time ") + row.token).c_str());
    EXPECT_STREQ(live_record.todaymaxtemptimestr, row.time_of_day) << row.token;
    EXPECT_EQ(live_record.todaymaxtemptime, row.seconds) << row.token;
  }
}

TEST_F(ReportParser, ReadsTheValueAfterTheFirstOccurrenceOfTheKey) {
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
    reset_live_record(live_record);
    parse_live_reply(row.report.c_str(), station_settings, live_record);
    EXPECT_EQ(live_record.temp10, row.temperature) << row.report.substr(0, 100);
  }
}

// A current value, and the highest and lowest one of the day, the month and the year.
struct quantity {
  const char* name;
  const char* unit;
  number_field current;
  number_field extremes[6];
};

constexpr const char* EXTREMES[][2] = {{"day1_", "max"},   {"day1_", "min"},  {"month1_", "max"},
                                       {"month1_", "min"}, {"year1_", "max"}, {"year1_", "min"}};

constexpr quantity QUANTITIES[] = {
    // clang-format off
    {"th0_temp", "_c", &LiveRecord::temp10, {
        &LiveRecord::todaymaxtemp10, &LiveRecord::todaymintemp10, &LiveRecord::monthmaxtemp10,
        &LiveRecord::monthmintemp10, &LiveRecord::yearmaxtemp10,  &LiveRecord::yearmintemp10}},
    {"th2_dew", "_c", &LiveRecord::dew10, {
        &LiveRecord::todaymaxdew10, &LiveRecord::todaymindew10, &LiveRecord::monthmaxdew10,
        &LiveRecord::monthmindew10, &LiveRecord::yearmaxdew10,  &LiveRecord::yearmindew10}},
    {"th1_hum", "_rel", &LiveRecord::hum, {
        &LiveRecord::todaymaxhum, &LiveRecord::todayminhum, &LiveRecord::monthmaxhum,
        &LiveRecord::monthminhum, &LiveRecord::yearmaxhum,  &LiveRecord::yearminhum}},
    {"thb0_sealevel", "_hpa", &LiveRecord::sealevel10, {
        &LiveRecord::todaymaxsealevel10, &LiveRecord::todayminsealevel10, &LiveRecord::monthmaxsealevel10,
        &LiveRecord::monthminsealevel10, &LiveRecord::yearmaxsealevel10,  &LiveRecord::yearminsealevel10}},
    {"wind0_chill", "_c", &LiveRecord::chill10,
        {{}, &LiveRecord::todayminchill10, {}, &LiveRecord::monthminchill10, {}, &LiveRecord::yearminchill10}},
    {"uv0_index", "", &LiveRecord::uv10,
        {&LiveRecord::todaymaxuv10, {}, &LiveRecord::monthmaxuv10, {}, &LiveRecord::yearmaxuv10, {}}},
    {"sol0_radiation", "_wqm", &LiveRecord::solar10,
        {&LiveRecord::todaymaxsolar10, {}, &LiveRecord::monthmaxsolar10, {}, &LiveRecord::yearmaxsolar10, {}}},
    {"wind0_gustspeed", "_ms", &LiveRecord::gust10,
        {&LiveRecord::todaymaxgust10, {}, &LiveRecord::monthmaxgust10, {}, &LiveRecord::yearmaxgust10, {}}},
    {"wind0_speed", "_ms", &LiveRecord::wind10, {}},
    {"rain0_rate", "_mm", &LiveRecord::rain, {}},
    // clang-format on
};

// Loads the full report with another current value and without the extreme at `absent`, if there is one.
void expect_widened(const quantity& row, const char* value, std::size_t absent) {
  std::string report = full_report();
  std::string change = std::string("actual_") + row.name + row.unit + ' ' + value;
  replace_value(report, std::string("actual_") + row.name + row.unit, value);
  LiveRecord expected = station_of_the_report();
  const std::int32_t current = std::atoi(value) * (row.current == &LiveRecord::hum ? 1 : 10);
  expected.*row.current = current == 0 ? MISSING_VALUE : current;
  for (std::size_t i = 0; i < std::size(EXTREMES); ++i) {
    if (row.extremes[i] == nullptr) continue;
    std::int32_t& extreme = expected.*row.extremes[i];
    const bool is_passed = i % 2 == 0 ? current > 0 : current < 0;
    if (i == absent) {
      const std::string key = EXTREMES[i][0] + std::string(row.name) + EXTREMES[i][1] + row.unit;
      replace_value(report, key, "---");
      change += ", no " + key;
      // The day's highest gust alone takes a current value where the report gives none.
      extreme = is_passed && row.extremes[i] == &LiveRecord::todaymaxgust10 ? current : MISSING_VALUE;
    } else if (is_passed && (i ^ 1) != absent) {  // of a pair, none without the other
      extreme = current;
    }
  }
  // The three outdoor values count together or not at all.
  const bool is_stale = !known(expected.temp10) || !known(expected.hum) || !known(expected.dew10);
  if (is_stale) expected.temp10 = expected.hum = expected.dew10 = MISSING_VALUE;
  live_data_stale = 0;
  load_live_record(report.c_str());
  expect_live_record(expected, change);
  EXPECT_EQ(live_data_stale, is_stale ? 1 : 0) << change;
}

TEST_F(ReportParser, WidensTheExtremesThatTheCurrentValuePassed) {
  for (const quantity& row : QUANTITIES)
    for (const char* value : {"2000", "-2000", "---"})
      for (std::size_t absent = 0; absent <= std::size(EXTREMES); ++absent)
        if (absent == std::size(EXTREMES) || row.extremes[absent] != nullptr)
          expect_widened(row, value, absent);
}

TEST_F(ReportParser, KeepsWhatAnOutdoorValueHasWidenedWhenItFallsWithAnother) {
  std::string report = full_report();
  replace_value(report, "actual_th0_temp_c", "2000");
  replace_value(report, "actual_th2_dew_c", "---");
  load_live_record(report.c_str());
  EXPECT_EQ(live_record.temp10, MISSING_VALUE);
  EXPECT_EQ(live_record.todaymaxtemp10, 20'000);
}

TEST_F(ReportParser, PrintsItsMainValuesInDebugMode) {
  for (const std::int32_t debug : {0, 1}) {
    debug_flag = debug;
    ::testing::internal::CaptureStderr();
    load_live_record(full_report().c_str());
    const std::string expected =
        debug == 0 ? "" : read_whole_file(TESTS_DIRECTORY "/live/golden/debug_output");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), expected);
  }
  // Without the dew point the outdoor values show as missing, also those that came.
  ::testing::internal::CaptureStderr();
  load_live_record("actual_th0_temp_c 21.25\nactual_th1_hum_rel 55\n");
  EXPECT_TRUE(
      ::testing::internal::GetCapturedStderr().starts_with("temp10: -9999\nhum: -9999\ndew10: -9999\n"));
}

}  // namespace
}  // namespace skypost::testing
