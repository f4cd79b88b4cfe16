// The whole of every pull file, byte for byte, against the texts in golden/, and what single values
// change in them. The networks read these files by their lines: one too many shifts all behind it.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "base/value.h"
#include "pullfiles/awekas_files.h"
#include "pullfiles/hetweeractueel.h"
#include "pullfiles/meteoclimatic.h"
#include "pullfiles/wetterspiegel.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

std::string compose(const pull_file& file, const LiveRecord& live, const moment& now) {
  settings_record settings;
  fill_settings(settings);
  pull_text text;
  file.compose(text, settings, live, now);
  return text.c_str();
}

struct file_case {
  const char* name;
  const pull_file* file;
};

constexpr file_case CASES[] = {
    {"awekas", &AWEKAS_FILE},
    {"wedaal", &WEDAAL_FILE},
    {"wetterpage24", &WETTERPAGE24_FILE},
    {"meteoclimatic", &METEOCLIMATIC_FILE},
    {"wetterspiegel", &WETTERSPIEGEL_FILE},
    {"hetweeractueel", &HETWEERACTUEEL_FILE},
};

class PullFileContents : public ::testing::TestWithParam<file_case> {
 protected:
  static std::string compose_for(const LiveRecord& live) {
    return compose(*GetParam().file, live, spring_morning());
  }

  static std::string golden(const char* station) {
    return read_whole_file(std::string(TESTS_DIRECTORY "/pullfiles/golden/") + GetParam().name + "." +
                           station);
  }
};

TEST_P(PullFileContents, OfAFullyEquippedStation) {
  EXPECT_EQ(compose_for(fully_equipped_station()), golden("full"));
}

TEST_P(PullFileContents, OfAStationWithOnlyTheOutdoorValues) {
  EXPECT_EQ(compose_for(sparse_station()), golden("sparse"));
}

INSTANTIATE_TEST_SUITE_P(PullFiles, PullFileContents, ::testing::ValuesIn(CASES),
                         [](const auto& row) { return row.param.name; });

struct detail_case {
  const pull_file& file;
  void (*change)(LiveRecord& live, moment& now);  // of the fully equipped station
  const char* holds;
};

const detail_case DETAILS[] = {
    // clang-format off
    {AWEKAS_FILE, [](auto& live, auto&) { live.todayraintotal10 = 0; }, "\n57\n1013.2\n0.0\n13.0\n225\n"},
    {WEDAAL_FILE, [](auto& live, auto&) { live.todaymaxgust10 = MISSING_VALUE; }, "\n\n\n\n-3.5\n"},
    {WEDAAL_FILE, [](auto& live, auto&) { std::strcpy(live.todaymaxgusttimestr, "---"); }, "\n44.6\n\n-3.5\n"},
    {WEDAAL_FILE, [](auto&, auto& now) { now = moment_at(951'778'800); }, "\n00:00\n29.02.00\n"},
    {WETTERPAGE24_FILE, [](auto&, auto& now) { now.local.tm_year = 200; }, "\n06.05.100\n"},
    {METEOCLIMATIC_FILE, [](auto& live, auto&) { live.temp10 = -4; }, "\n*TMP=-0.4\n"},
    {METEOCLIMATIC_FILE, [](auto& live, auto&) { live.monthminhum = MISSING_VALUE; }, "=97\n*MHBR="},
    {WETTERSPIEGEL_FILE, [](auto& live, auto&) { live.temp10 = -4; }, "\ntemp: -0.4\n"},
    {WETTERSPIEGEL_FILE, [](auto& live, auto&) { live.rain = 5; }, "\nRR1: 1\nRR6: -1\n"},
    {WETTERSPIEGEL_FILE, [](auto& live, auto&) { live.rain = 4; }, "\nRR1: 0\nRR6: -1\n"},
    {WETTERSPIEGEL_FILE, [](auto& live, auto&) { live.winddir = MISSING_VALUE; }, "\nALT 2: -1\nff: "},
    {HETWEERACTUEEL_FILE, [](auto& live, auto&) { live.last60mpresstrend = 0; }, "$barTrend = \"Steady\";\n"},
    {HETWEERACTUEEL_FILE, [](auto& live, auto&) { live.last60mpresstrend = -1; }, "$barTrend = \"Falling\";\n"},
    {HETWEERACTUEEL_FILE, [](auto& live, auto&) { live.last60mpresstrend = 2; }, "$barTrend = \"---\";\n"},
    {HETWEERACTUEEL_FILE, [](auto& live, auto&) { live.todaymaxuv10 = MISSING_VALUE; }, "$hiUV = \"---\";\n$hiUVTime = \"---\";\n"},
    {HETWEERACTUEEL_FILE, [](auto& live, auto&) { std::strcpy(live.todaymaxuvtimestr, "---"); }, "$hiUV = \"5.2\";\n$hiUVTime = \"---\";\n"},
    // Half an hour past midnight in Berlin is yesterday in UTC.
    {HETWEERACTUEEL_FILE, [](auto&, auto& now) { now = moment_at(1'236'209'400); },
     "$date = \"05-03-09\";\n$time = \"00:30\";\n$stationDate = \"05-03-09\";\n$stationTime = \"00:30\";\n"
     "$utcdate = \"04-03-09\";\n$utctime = \"23:30\";\n"},
    {HETWEERACTUEEL_FILE, [](auto&, auto& now) { now.local.tm_year = 200; }, "$date = \"06-05-100\";\n"},
    // clang-format on
};

TEST(PullFileDetails, ChangeWhatTheyShould) {
  for (const detail_case& row : DETAILS) {
    LiveRecord live = fully_equipped_station();
    moment now = spring_morning();
    row.change(live, now);
    const std::string text = compose(row.file, live, now);
    EXPECT_NE(text.find(row.holds), std::string::npos) << row.holds << "not in\n" << text;
  }
}

}  // namespace
}  // namespace skypost::testing
