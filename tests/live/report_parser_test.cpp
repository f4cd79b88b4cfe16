// The report's text becomes the live record: which key fills which field, how a value is read, which
// extremes are widened, when the outdoor values count as missing.

#include "live/report_parser.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>

#include "base/process_state.h"
#include "base/value.h"
#include "settings/record.h"

namespace skypost::testing {
namespace {

using number_field = std::int32_t LiveRecord::*;
using word_field = live_text LiveRecord::*;

struct number_line {
  const char* line;
  number_field field;
  std::int32_t expected;
};

struct time_line {
  const char* line;
  word_field time_of_day;
  const char* expected_time_of_day;
  number_field seconds;  // nullptr: the record keeps no seconds of it
  std::int32_t expected_seconds;
};

struct word_line {
  const char* line;
  word_field field;
  const char* expected;
  const char* when_absent;
};

// A report in which no two keys have the same value.
constexpr number_line NUMBER_LINES[] = {
    // clang-format off
    {"actual_th0_temp_c 50.1",              &LiveRecord::temp10,              501},
    {"actual_th1_hum_rel 502",              &LiveRecord::hum,                 502},
    {"actual_th2_dew_c 50.3",               &LiveRecord::dew10,               503},
    {"actual_thb0_press_hpa 50.4",          &LiveRecord::press10,             504},
    {"actual_thb0_height_m 505.4",          &LiveRecord::height,              505},
    {"actual_thb0_altimeter_hpa 50.6",      &LiveRecord::altimeter10,         506},
    {"actual_thb0_sealevel_hpa 50.7",       &LiveRecord::sealevel10,          507},
    {"actual_wind0_dir_deg 508",            &LiveRecord::winddir,             508},
    {"actual_wind0_speed_ms 51.1",          &LiveRecord::wind10,              511},
    {"actual_wind0_gustspeed_ms 51.2",      &LiveRecord::gust10,              512},
    {"actual_wind0_chill_c 51.3",           &LiveRecord::chill10,             513},
    {"actual_rain0_rate_mm 51.4",           &LiveRecord::rain,                514},
    {"actual_uv0_index 51.5",               &LiveRecord::uv10,                515},
    {"actual_sol0_radiation_wqm 51.6",      &LiveRecord::solar10,             516},
    {"actual_thb1_temp_c 51.7",             &LiveRecord::indoortemp10,        517},
    {"actual_thb1_hum_rel 518",             &LiveRecord::indoorhum,           518},
    {"last15m_rain0_total_mm 42.0",         &LiveRecord::last15mraintotal10,  420},
    {"last15m_th0_temp_c 42.1",             &LiveRecord::last15mtemp10,       421},
    {"last15m_thb0_sealevel_hpa 42.2",      &LiveRecord::last15msealevel10,   422},
    {"last15m_wind0_gustspeedmax_ms 72.3",  &LiveRecord::last15mmaxgust10,    723},
    {"last15m_wind0_speed_ms 42.4",         &LiveRecord::last15mwind10,       424},
    {"last15m_wind0_maindir_deg 425",       &LiveRecord::last15mwinddir,      425},
    {"last60m_rain0_total_mm 42.6",         &LiveRecord::last60mraintotal10,  426},
    {"last24h_rain0_total_mm 42.7",         &LiveRecord::last24hraintotal10,  427},
    {"last60m_sol0_radiationmax_wqm 728.9", &LiveRecord::last60mmaxsolar10,   7280},
    {"last60m_wind0_gustspeedmax_ms 72.9",  &LiveRecord::last60mmaxgust10,    729},
    {"last60m_thb0_press_trend 430",        &LiveRecord::last60mpresstrend,   430},
    {"day1_th0_temp_c 43.1",                &LiveRecord::todaytemp10,         431},
    {"day1_th0_tempmax_c 73.2",             &LiveRecord::todaymaxtemp10,      732},
    {"day1_th0_tempmin_c 23.5",             &LiveRecord::todaymintemp10,      235},
    {"day1_th2_dewmax_c 73.8",              &LiveRecord::todaymaxdew10,       738},
    {"day1_th2_dewmin_c 24.0",              &LiveRecord::todaymindew10,       240},
    {"day1_wind0_chillmin_c 24.2",          &LiveRecord::todayminchill10,     242},
    {"day1_th1_hum_rel 444",                &LiveRecord::todayhum,            444},
    {"day1_th1_hummax_rel 745",             &LiveRecord::todaymaxhum,         745},
    {"day1_th1_hummin_rel 248",             &LiveRecord::todayminhum,         248},
    {"day1_uv0_indexmax 75.1",              &LiveRecord::todaymaxuv10,        751},
    {"day1_sol0_radiationmax_wqm 753.9",    &LiveRecord::todaymaxsolar10,     7530},
    {"day1_thb0_sealevelmax_hpa 75.5",      &LiveRecord::todaymaxsealevel10,  755},
    {"day1_thb0_sealevelmin_hpa 25.8",      &LiveRecord::todayminsealevel10,  258},
    {"day1_wind0_gustspeedmax_ms 76.1",     &LiveRecord::todaymaxgust10,      761},
    {"day1_wind0_speedmax_ms 76.3",         &LiveRecord::todaymaxwind10,      763},
    {"day1_rain0_ratemax_mm 76.5",          &LiveRecord::todaymaxrainrate10,  765},
    {"day1_rain0_total_mm 46.7",            &LiveRecord::todayraintotal10,    467},
    {"month1_th0_tempmax_c 76.8",           &LiveRecord::monthmaxtemp10,      768},
    {"month1_th0_tempmin_c 26.9",           &LiveRecord::monthmintemp10,      269},
    {"month1_th2_dewmax_c 77.0",            &LiveRecord::monthmaxdew10,       770},
    {"month1_th2_dewmin_c 27.1",            &LiveRecord::monthmindew10,       271},
    {"month1_wind0_chillmin_c 27.2",        &LiveRecord::monthminchill10,     272},
    {"month1_th1_hummax_rel 773",           &LiveRecord::monthmaxhum,         773},
    {"month1_th1_hummin_rel 274",           &LiveRecord::monthminhum,         274},
    {"month1_uv0_indexmax 77.5",            &LiveRecord::monthmaxuv10,        775},
    {"month1_sol0_radiationmax_wqm 776.9",  &LiveRecord::monthmaxsolar10,     7760},
    {"month1_thb0_sealevelmax_hpa 77.7",    &LiveRecord::monthmaxsealevel10,  777},
    {"month1_thb0_sealevelmin_hpa 27.8",    &LiveRecord::monthminsealevel10,  278},
    {"month1_wind0_gustspeedmax_ms 77.9",   &LiveRecord::monthmaxgust10,      779},
    {"month1_rain0_ratemax_mm 78.0",        &LiveRecord::monthmaxrainrate10,  780},
    {"month1_rain0_total_mm 48.1",          &LiveRecord::monthraintotal10,    481},
    {"year1_th0_tempmax_c 78.2",            &LiveRecord::yearmaxtemp10,       782},
    {"year1_th0_tempmin_c 28.3",            &LiveRecord::yearmintemp10,       283},
    {"year1_th2_dewmax_c 78.4",             &LiveRecord::yearmaxdew10,        784},
    {"year1_th2_dewmin_c 28.5",             &LiveRecord::yearmindew10,        285},
    {"year1_wind0_chillmin_c 28.6",         &LiveRecord::yearminchill10,      286},
    {"year1_th1_hummax_rel 787",            &LiveRecord::yearmaxhum,          787},
    {"year1_th1_hummin_rel 288",            &LiveRecord::yearminhum,          288},
    {"year1_uv0_indexmax 78.9",             &LiveRecord::yearmaxuv10,         789},
    {"year1_sol0_radiationmax_wqm 790.9",   &LiveRecord::yearmaxsolar10,      7900},
    {"year1_thb0_sealevelmax_hpa 79.1",     &LiveRecord::yearmaxsealevel10,   791},
    {"year1_thb0_sealevelmin_hpa 29.2",     &LiveRecord::yearminsealevel10,   292},
    {"year1_wind0_gustspeedmax_ms 79.3",    &LiveRecord::yearmaxgust10,       793},
    {"year1_rain0_ratemax_mm 79.4",         &LiveRecord::yearmaxrainrate10,   794},
    {"year1_rain0_total_mm 49.5",           &LiveRecord::yearraintotal10,     495},
    // clang-format on
};

// Times of a summer day in Berlin.
constexpr time_line TIME_LINES[] = {
    // clang-format off
    {"day1_th0_tempmax_time 20240617011012",          &LiveRecord::todaymaxtemptimestr,     "01:10", &LiveRecord::todaymaxtemptime,     1'718'579'412},
    {"day1_th0_tempmin_time 20240617061312",          &LiveRecord::todaymintemptimestr,     "06:13", &LiveRecord::todaymintemptime,     1'718'597'592},
    {"day1_th2_dewmax_time 20240617111612",           &LiveRecord::todaymaxdewtimestr,      "11:16", nullptr,                           0},
    {"day1_th2_dewmin_time 20240617161912",           &LiveRecord::todaymindewtimestr,      "16:19", nullptr,                           0},
    {"day1_wind0_chillmin_time 20240617212212",       &LiveRecord::todayminchilltimestr,    "21:22", nullptr,                           0},
    {"day1_th1_hummax_time 20240617022512",           &LiveRecord::todaymaxhumtimestr,      "02:25", &LiveRecord::todaymaxhumtime,      1'718'583'912},
    {"day1_th1_hummin_time 20240617072812",           &LiveRecord::todayminhumtimestr,      "07:28", &LiveRecord::todayminhumtime,      1'718'602'092},
    {"day1_uv0_indexmax_time 20240617123112",         &LiveRecord::todaymaxuvtimestr,       "12:31", nullptr,                           0},
    {"day1_sol0_radiationmax_time 20240617173412",    &LiveRecord::todaymaxsolartimestr,    "17:34", nullptr,                           0},
    {"day1_thb0_sealevelmax_time 20240617223712",     &LiveRecord::todaymaxsealeveltimestr, "22:37", &LiveRecord::todaymaxsealeveltime, 1'718'656'632},
    {"day1_thb0_sealevelmin_time 20240617034012",     &LiveRecord::todayminsealeveltimestr, "03:40", &LiveRecord::todayminsealeveltime, 1'718'588'412},
    {"day1_wind0_gustspeedmax_time 20240617084312",   &LiveRecord::todaymaxgusttimestr,     "08:43", nullptr,                           0},
    {"day1_wind0_speedmax_time 20240617134612",       &LiveRecord::todaymaxwindtimestr,     "13:46", nullptr,                           0},
    {"day1_rain0_ratemax_time 20240617184912",        &LiveRecord::todaymaxrainratetimestr, "18:49", nullptr,                           0},
    // clang-format on
};

constexpr word_line WORD_LINES[] = {
    {"actual_wind0_dir_de NNO", &LiveRecord::winddirstr, "NNO", ""},
    {"actual_wind0_dir_en NNE", &LiveRecord::winddirstren, "NNE", ""},
    {"actual_sunrise_standard_local 04:43", &LiveRecord::sunrise, "04:43", "---"},
    {"actual_sunset_standard_local 21:31", &LiveRecord::sunset, "21:31", "---"},
};

constexpr const char* EXTRA_LINES[] = {"actual_t0_temp_c 10.1", "actual_t1_temp_c 10.2",
                                       "actual_t2_temp_c 10.3", "actual_t3_temp_c 10.4",
                                       "actual_t4_temp_c 10.5", "actual_t5_temp_c 10.6"};

constexpr char OUTDOOR_LINES[] = "actual_th0_temp_c 21.25\nactual_th1_hum_rel 55\nactual_th2_dew_c 11.9\n";

std::string full_report() {
  std::string report;
  for (const number_line& row : NUMBER_LINES) report += std::string(row.line) + "\n";
  for (const time_line& row : TIME_LINES) report += std::string(row.line) + "\n";
  for (const word_line& row : WORD_LINES) report += std::string(row.line) + "\n";
  for (const char* line : EXTRA_LINES) report += std::string(line) + "\n";
  return report;
}

void expect_everything_absent() {
  for (const number_line& row : NUMBER_LINES)
    EXPECT_EQ(live_record.*row.field, row.field == &LiveRecord::height ? 0 : MISSING_VALUE) << row.line;
  for (const time_line& row : TIME_LINES) {
    EXPECT_STREQ(live_record.*row.time_of_day, "---") << row.line;
    if (row.seconds != nullptr) {
      EXPECT_EQ(live_record.*row.seconds, 0) << row.line;
    }
  }
  for (const word_line& row : WORD_LINES) EXPECT_STREQ(live_record.*row.field, row.when_absent) << row.line;
  for (const std::int32_t temperature : live_record.extratemp10) EXPECT_EQ(temperature, MISSING_VALUE);
}

// A sensor of its own for each role, and Berlin's time.
class ReportParser : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("TZ", "Europe/Berlin", 1);
    station_settings.set_text(sensor_temp, "th0");
    station_settings.set_text(sensor_hum, "th1");
    station_settings.set_text(sensor_dew, "th2");
    station_settings.set_text(sensor_press, "thb0");
    station_settings.set_text(sensor_indoor, "thb1");
    station_settings.set_text(sensor_rain, "rain0");
    station_settings.set_text(sensor_wind, "wind0");
    station_settings.set_text(sensor_uv, "uv0");
    station_settings.set_text(sensor_solar, "sol0");
    for (int i = 0; i < 6; ++i)
      station_settings.set_text(sensor_extra_temp[i], ("t" + std::to_string(i)).c_str());
    flags = {};
    std::memset(&live_record, 0x5a, sizeof live_record);
  }
  void TearDown() override {
    std::memset(&station_settings, 0, sizeof station_settings);
    flags = {};
  }
};

TEST_F(ReportParser, FillsEveryFieldFromItsOwnKey) {
  load_live_record(full_report().c_str());
  for (const number_line& row : NUMBER_LINES) EXPECT_EQ(live_record.*row.field, row.expected) << row.line;
  for (const time_line& row : TIME_LINES) {
    EXPECT_STREQ(live_record.*row.time_of_day, row.expected_time_of_day) << row.line;
    if (row.seconds != nullptr) {
      EXPECT_EQ(live_record.*row.seconds, row.expected_seconds) << row.line;
    }
  }
  for (const word_line& row : WORD_LINES) EXPECT_STREQ(live_record.*row.field, row.expected) << row.line;
  for (int i = 0; i < 6; ++i) EXPECT_EQ(live_record.extratemp10[i], 101 + i);
  EXPECT_EQ(flags.live_data_stale, 0);
}

TEST_F(ReportParser, ForgetsWhatTheNextReportDoesNotSay) {
  for (const char* report : {"", "<html>404 not found</html>", "actual_th9_temp_c 21.5\n"}) {
    load_live_record(full_report().c_str());
    load_live_record(report);
    expect_everything_absent();
  }
}

TEST_F(ReportParser, FindsNothingForASensorThatIsNotSelected) {
  std::memset(&station_settings, 0, sizeof station_settings);
  std::string report = full_report();
  report.erase(report.find("actual_sunrise"), report.find("actual_t0") - report.find("actual_sunrise"));
  load_live_record(report.c_str());
  expect_everything_absent();
}

struct value_case {
  const char* text;
  std::int32_t expected;
};

void expect_values(const char* key, number_field field, std::initializer_list<value_case> cases) {
  for (const value_case& row : cases) {
    load_live_record((std::string(key) + " " + row.text).c_str());
    EXPECT_EQ(live_record.*field, row.expected) << key << " " << row.text;
  }
}

TEST_F(ReportParser, ReadsTenths) {
  // clang-format off
  expect_values("day1_th0_temp_c", &LiveRecord::todaytemp10,
                {{"21.25", 213}, {"-3.25", -33}, {"21.24", 212},
                 {"21.249999999999999999999999999999", 212}, {"-0.04", 0}, {"-0.05", -1}, {"0.15", 2},
                 {"+5", 50}, {"-.5", -5}, {"5.", 50}, {"00012.5", 125}, {"1e2", 1000},
                 {"1.5E+1", 150}, {"15e-1", 15}, {"1.96e-1", 2}, {"2e", 20}, {"2e-x", 20},
                 {"12abc", 120}, {"1.2.3", 12}, {"1,5", 10}, {"0x1p5", 0}, {"-0X1F", 0},
                 {"0e99999999999", 0}, {"1e-99999999999", 0}, {"1234567890123456789012345e-23", 123},
                 {"0.00000000000000000000000012345e26", 123}, {"214748364.7", INT_MAX},
                 {"-214748364.8", INT_MIN},
                 {"214748364.75", MISSING_VALUE}, {"-214748364.85", MISSING_VALUE},
                 {"99999999999", MISSING_VALUE}, {"1e308", MISSING_VALUE},
                 {"-1e99999999999", MISSING_VALUE}, {"nan", MISSING_VALUE}, {"-inf", MISSING_VALUE},
                 {"infinity", MISSING_VALUE}, {"---", MISSING_VALUE}, {"abc", MISSING_VALUE},
                 {"-", MISSING_VALUE}, {"+.", MISSING_VALUE}, {"+-5", MISSING_VALUE},
                 {"- 5", MISSING_VALUE}, {"e5", MISSING_VALUE}, {"", MISSING_VALUE}});
  // clang-format on
}

TEST_F(ReportParser, ReadsIntegersUpToTheirFirstOtherCharacter) {
  // clang-format off
  expect_values("day1_th1_hum_rel", &LiveRecord::todayhum,
                {{"55", 55}, {"55.7", 55}, {"-7.9", -7}, {"+7", 7}, {"007", 7}, {"12e3", 12},
                 {"0x10", 0}, {"2147483647", INT_MAX}, {"-2147483648", INT_MIN},
                 {"2147483648", MISSING_VALUE}, {"-2147483649", MISSING_VALUE},
                 {"99999999999", MISSING_VALUE}, {"18446744073709551671", MISSING_VALUE},
                 {".5", MISSING_VALUE}, {"nan", MISSING_VALUE}, {"", MISSING_VALUE}});
  expect_values("month1_sol0_radiationmax_wqm", &LiveRecord::monthmaxsolar10,
                {{"523.4", 5230}, {"-3.9", -30}, {"5e1", 50}, {"214748364", 2'147'483'640},
                 {"214748365", MISSING_VALUE}, {"---", MISSING_VALUE}});
  // clang-format on
}

TEST_F(ReportParser, ReadsTheHeightInWholeMetres) {
  expect_values("actual_thb0_height_m", &LiveRecord::height,
                {{"512.6", 513},
                 {"512,6", 512},
                 {"512.4", 512},
                 {"-0.5", -1},
                 {"1e3", 1000},
                 {"abc", 0},
                 {"99999999999", 0}});
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

TEST_F(ReportParser, ReadsTheValueBehindTheFirstOccurrenceOfTheKey) {
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
    reset_live_record();
    parse_live_reply(row.report.c_str());
    EXPECT_EQ(live_record.temp10, row.temperature) << row.report.substr(0, 100);
  }
}

TEST_F(ReportParser, TakesAKeyThatEndsInABlankForNoLongerOne) {
  load_live_record(
      "day1_uv0_indexmax_time 20240617143512\nday1_uv0_indexmax 7.5\nactual_uv0_index_level 3\n"
      "actual_uv0_index\n4.5\nactual_wind0_dir_deg 225\nactual_wind0_dir_de SW\n");
  EXPECT_EQ(live_record.todaymaxuv10, 75);
  EXPECT_STREQ(live_record.todaymaxuvtimestr, "14:35");
  EXPECT_EQ(live_record.uv10, MISSING_VALUE);
  EXPECT_EQ(live_record.winddir, 225);
  EXPECT_STREQ(live_record.winddirstr, "SW");
}

// One extreme of one period, and the other one of a pair that must be there too.
struct extreme {
  const char* current;
  const char* key;
  number_field field;
  bool is_highest;
  const char* other;  // nullptr: stands alone
};

constexpr extreme EXTREMES[] = {
    // clang-format off
    {"actual_th0_temp_c",          "day1_th0_tempmax_c",            &LiveRecord::todaymaxtemp10,     true,  "day1_th0_tempmin_c"},
    {"actual_th0_temp_c",          "day1_th0_tempmin_c",            &LiveRecord::todaymintemp10,     false, "day1_th0_tempmax_c"},
    {"actual_th0_temp_c",          "month1_th0_tempmax_c",          &LiveRecord::monthmaxtemp10,     true,  "month1_th0_tempmin_c"},
    {"actual_th0_temp_c",          "month1_th0_tempmin_c",          &LiveRecord::monthmintemp10,     false, "month1_th0_tempmax_c"},
    {"actual_th0_temp_c",          "year1_th0_tempmax_c",           &LiveRecord::yearmaxtemp10,      true,  "year1_th0_tempmin_c"},
    {"actual_th0_temp_c",          "year1_th0_tempmin_c",           &LiveRecord::yearmintemp10,      false, "year1_th0_tempmax_c"},
    {"actual_th2_dew_c",           "day1_th2_dewmax_c",             &LiveRecord::todaymaxdew10,      true,  "day1_th2_dewmin_c"},
    {"actual_th2_dew_c",           "day1_th2_dewmin_c",             &LiveRecord::todaymindew10,      false, "day1_th2_dewmax_c"},
    {"actual_th2_dew_c",           "month1_th2_dewmax_c",           &LiveRecord::monthmaxdew10,      true,  "month1_th2_dewmin_c"},
    {"actual_th2_dew_c",           "month1_th2_dewmin_c",           &LiveRecord::monthmindew10,      false, "month1_th2_dewmax_c"},
    {"actual_th2_dew_c",           "year1_th2_dewmax_c",            &LiveRecord::yearmaxdew10,       true,  "year1_th2_dewmin_c"},
    {"actual_th2_dew_c",           "year1_th2_dewmin_c",            &LiveRecord::yearmindew10,       false, "year1_th2_dewmax_c"},
    {"actual_th1_hum_rel",         "day1_th1_hummax_rel",           &LiveRecord::todaymaxhum,        true,  "day1_th1_hummin_rel"},
    {"actual_th1_hum_rel",         "day1_th1_hummin_rel",           &LiveRecord::todayminhum,        false, "day1_th1_hummax_rel"},
    {"actual_th1_hum_rel",         "month1_th1_hummax_rel",         &LiveRecord::monthmaxhum,        true,  "month1_th1_hummin_rel"},
    {"actual_th1_hum_rel",         "month1_th1_hummin_rel",         &LiveRecord::monthminhum,        false, "month1_th1_hummax_rel"},
    {"actual_th1_hum_rel",         "year1_th1_hummax_rel",          &LiveRecord::yearmaxhum,         true,  "year1_th1_hummin_rel"},
    {"actual_th1_hum_rel",         "year1_th1_hummin_rel",          &LiveRecord::yearminhum,         false, "year1_th1_hummax_rel"},
    {"actual_thb0_sealevel_hpa",   "day1_thb0_sealevelmax_hpa",     &LiveRecord::todaymaxsealevel10, true,  "day1_thb0_sealevelmin_hpa"},
    {"actual_thb0_sealevel_hpa",   "day1_thb0_sealevelmin_hpa",     &LiveRecord::todayminsealevel10, false, "day1_thb0_sealevelmax_hpa"},
    {"actual_thb0_sealevel_hpa",   "month1_thb0_sealevelmax_hpa",   &LiveRecord::monthmaxsealevel10, true,  "month1_thb0_sealevelmin_hpa"},
    {"actual_thb0_sealevel_hpa",   "month1_thb0_sealevelmin_hpa",   &LiveRecord::monthminsealevel10, false, "month1_thb0_sealevelmax_hpa"},
    {"actual_thb0_sealevel_hpa",   "year1_thb0_sealevelmax_hpa",    &LiveRecord::yearmaxsealevel10,  true,  "year1_thb0_sealevelmin_hpa"},
    {"actual_thb0_sealevel_hpa",   "year1_thb0_sealevelmin_hpa",    &LiveRecord::yearminsealevel10,  false, "year1_thb0_sealevelmax_hpa"},
    {"actual_wind0_chill_c",       "day1_wind0_chillmin_c",         &LiveRecord::todayminchill10,    false, nullptr},
    {"actual_wind0_chill_c",       "month1_wind0_chillmin_c",       &LiveRecord::monthminchill10,    false, nullptr},
    {"actual_wind0_chill_c",       "year1_wind0_chillmin_c",        &LiveRecord::yearminchill10,     false, nullptr},
    {"actual_uv0_index",           "day1_uv0_indexmax",             &LiveRecord::todaymaxuv10,       true,  nullptr},
    {"actual_uv0_index",           "month1_uv0_indexmax",           &LiveRecord::monthmaxuv10,       true,  nullptr},
    {"actual_uv0_index",           "year1_uv0_indexmax",            &LiveRecord::yearmaxuv10,        true,  nullptr},
    {"actual_sol0_radiation_wqm",  "day1_sol0_radiationmax_wqm",    &LiveRecord::todaymaxsolar10,    true,  nullptr},
    {"actual_sol0_radiation_wqm",  "month1_sol0_radiationmax_wqm",  &LiveRecord::monthmaxsolar10,    true,  nullptr},
    {"actual_sol0_radiation_wqm",  "year1_sol0_radiationmax_wqm",   &LiveRecord::yearmaxsolar10,     true,  nullptr},
    {"actual_wind0_gustspeed_ms",  "day1_wind0_gustspeedmax_ms",    &LiveRecord::todaymaxgust10,     true,  nullptr},
    {"actual_wind0_gustspeed_ms",  "month1_wind0_gustspeedmax_ms",  &LiveRecord::monthmaxgust10,     true,  nullptr},
    {"actual_wind0_gustspeed_ms",  "year1_wind0_gustspeedmax_ms",   &LiveRecord::yearmaxgust10,      true,  nullptr},
    // clang-format on
};

std::int32_t extreme_with(const extreme& row, const char* current, bool with_extreme, bool with_other) {
  std::string report = std::string(row.current) + " " + current + "\n";
  if (with_extreme) report += std::string(row.key) + " 20\n";
  if (with_other && row.other != nullptr) report += std::string(row.other) + " 20\n";
  load_live_record(report.c_str());
  return live_record.*row.field;
}

TEST_F(ReportParser, WidensAnExtremeThatTheCurrentValuePassed) {
  for (const extreme& row : EXTREMES) {
    const std::int32_t stays = extreme_with(row, "20", true, true);
    const char* const beyond = row.is_highest ? "30" : "10";
    EXPECT_EQ(extreme_with(row, beyond, true, true), row.is_highest ? stays / 2 * 3 : stays / 2) << row.key;
    EXPECT_EQ(extreme_with(row, row.is_highest ? "10" : "30", true, true), stays) << row.key;
    EXPECT_EQ(extreme_with(row, "---", true, true), stays) << row.key;
    if (row.other != nullptr) {
      EXPECT_EQ(extreme_with(row, beyond, true, false), stays) << row.key;
    }
    // The day's highest gust alone takes a current value where the report gives none.
    const bool takes_any = row.field == &LiveRecord::todaymaxgust10;
    EXPECT_EQ(extreme_with(row, beyond, false, true), takes_any ? 300 : MISSING_VALUE) << row.key;
  }
}

TEST_F(ReportParser, WidensNothingElse) {
  load_live_record(
      "actual_wind0_speed_ms 30\nday1_wind0_speedmax_ms 20\nactual_rain0_rate_mm 30\n"
      "day1_rain0_ratemax_mm 20\nmonth1_rain0_ratemax_mm 20\nactual_wind0_gustspeed_ms 30\n"
      "last15m_wind0_gustspeedmax_ms 20\nlast60m_wind0_gustspeedmax_ms 20\n"
      "actual_th0_temp_c 30\nday1_th0_tempmax_c 20\nday1_th0_tempmin_c 10\n"
      "day1_th0_tempmax_time 20240617143512\n");
  EXPECT_EQ(live_record.todaymaxwind10, 200);
  EXPECT_EQ(live_record.todaymaxrainrate10, 200);
  EXPECT_EQ(live_record.monthmaxrainrate10, 200);
  EXPECT_EQ(live_record.last15mmaxgust10, 200);
  EXPECT_EQ(live_record.last60mmaxgust10, 200);
  EXPECT_EQ(live_record.todaymaxtemp10, 300);
  EXPECT_STREQ(live_record.todaymaxtemptimestr, "14:35");
}

TEST_F(ReportParser, TakesTheThreeOutdoorValuesTogetherOrNotAtAll) {
  const std::string complete = OUTDOOR_LINES;
  load_live_record(complete.c_str());
  EXPECT_EQ(live_record.temp10, 213);
  EXPECT_EQ(live_record.hum, 55);
  EXPECT_EQ(live_record.dew10, 119);
  EXPECT_EQ(flags.live_data_stale, 0);

  for (const char* missing : {"actual_th0_temp_c", "actual_th1_hum_rel", "actual_th2_dew_c"}) {
    flags.live_data_stale = 0;
    std::string report = complete + "day1_th0_tempmax_c 20\nday1_th0_tempmin_c 20\n";
    report.replace(report.find(missing), 6, "former");
    load_live_record(report.c_str());
    EXPECT_EQ(live_record.temp10, MISSING_VALUE) << missing;
    EXPECT_EQ(live_record.hum, MISSING_VALUE) << missing;
    EXPECT_EQ(live_record.dew10, MISSING_VALUE) << missing;
    EXPECT_EQ(flags.live_data_stale, 1) << missing;
  }
  // What the last temperature has widened stays.
  EXPECT_EQ(live_record.todaymaxtemp10, 213);
}

TEST_F(ReportParser, PrintsItsMainValuesInDebugMode) {
  ::testing::internal::CaptureStderr();
  load_live_record(full_report().c_str());
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");

  flags.debug_flag = 1;
  ::testing::internal::CaptureStderr();
  load_live_record(full_report().c_str());
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "temp10: 501\nhum: 502\ndew10: 503\npress10: 504\nsealevel10: 507\naltimeter10: 506\n"
            "wind10: 511\ngust10: 512\nlast15mmaxgust10: 723\nwinddir: 508\nwinddirstr: NNO\nrain: 514\n"
            "todayraintotal10: 467\n"
            "todaymintemp10: 235\ntodaymaxtemp10: 732\ntodayminhum: 248\ntodaymaxhum: 745\n"
            "todayminsealevel10: 258\ntodaymaxsealevel10: 755\ntodaymaxgust10: 761\n"
            "monthmintemp10: 269\nmonthmaxtemp10: 768\nmonthminhum: 274\nmonthmaxhum: 773\n"
            "monthminsealevel10: 278\nmonthmaxsealevel10: 777\nmonthmaxgust10: 779\n"
            "yearmintemp10: 283\nyearmaxtemp10: 782\nyearminhum: 288\nyearmaxhum: 787\n"
            "yearminsealevel10: 292\nyearmaxsealevel10: 791\nyearmaxgust10: 793\n");

  // Without the dew point the outdoor values show as missing, also those that came.
  ::testing::internal::CaptureStderr();
  load_live_record("actual_th0_temp_c 21.25\nactual_th1_hum_rel 55\n");
  EXPECT_TRUE(
      ::testing::internal::GetCapturedStderr().starts_with("temp10: -9999\nhum: -9999\ndew10: -9999\n"));
}

}  // namespace
}  // namespace skypost::testing
