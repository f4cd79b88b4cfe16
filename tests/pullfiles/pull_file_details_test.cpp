// What single values change in the pull files, beyond the two stations of the golden texts. The networks read
// these files by their lines: one too many shifts all after it.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pullfiles/pullfiles.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

struct detail_case {
  const pull_file& file;
  void (*change)(LiveRecord& live, moment& now);  // of the fully equipped station
  const char* holds;
};

const detail_case DETAILS[] = {
    // clang-format off
    {AWEKAS_PULL, [](auto& live, auto&) { live.todayraintotal10 = 0; }, "\n57\n1013.2\n0.0\n13.0\n225\n"},
    {WEDAAL_PULL, [](auto& live, auto&) { live.todaymaxgust10 = MISSING_VALUE; }, "\n\n\n\n-3.5\n"},
    {WEDAAL_PULL, [](auto& live, auto&) { std::strcpy(live.todaymaxgusttimestr, "---"); }, "\n44.6\n\n-3.5\n"},
    {WEDAAL_PULL, [](auto&, auto& now) { now = moment_at(951'778'800); }, "\n00:00\n29.02.00\n"},
    {WETTERPAGE24, [](auto&, auto& now) { now.local.tm_year = 200; }, "\n06.05.100\n"},
    {METEOCLIMATIC, [](auto& live, auto&) { live.temp10 = -4; }, "\n*TMP=-0.4\n"},
    {METEOCLIMATIC, [](auto& live, auto&) { live.monthminhum = MISSING_VALUE; }, "=97\n*MHBR="},
    {WETTERSPIEGEL, [](auto& live, auto&) { live.temp10 = -4; }, "\ntemp: -0.4\n"},
    {WETTERSPIEGEL, [](auto& live, auto&) { live.rain = 5; }, "\nRR1: 1\nRR6: -1\n"},
    {WETTERSPIEGEL, [](auto& live, auto&) { live.rain = 4; }, "\nRR1: 0\nRR6: -1\n"},
    {WETTERSPIEGEL, [](auto& live, auto&) { live.winddir = MISSING_VALUE; }, "\nALT 2: -1\nff: "},
    {HETWEERACTUEEL, [](auto& live, auto&) { live.last60mpresstrend = 0; }, "$barTrend = \"Steady\";\n"},
    {HETWEERACTUEEL, [](auto& live, auto&) { live.last60mpresstrend = -1; }, "$barTrend = \"Falling\";\n"},
    {HETWEERACTUEEL, [](auto& live, auto&) { live.last60mpresstrend = 2; }, "$barTrend = \"---\";\n"},
    {HETWEERACTUEEL, [](auto& live, auto&) { live.todaymaxuv10 = MISSING_VALUE; }, "$hiUV = \"---\";\n$hiUVTime = \"---\";\n"},
    {HETWEERACTUEEL, [](auto& live, auto&) { std::strcpy(live.todaymaxuvtimestr, "---"); }, "$hiUV = \"5.2\";\n$hiUVTime = \"---\";\n"},
    // Half an hour past midnight in Berlin is yesterday in UTC.
    {HETWEERACTUEEL, [](auto&, auto& now) { now = moment_at(1'236'209'400); },
     "$date = \"05-03-09\";\n$time = \"00:30\";\n$stationDate = \"05-03-09\";\n$stationTime = \"00:30\";\n"
     "$utcdate = \"04-03-09\";\n$utctime = \"23:30\";\n"},
    {HETWEERACTUEEL, [](auto&, auto& now) { now.local.tm_year = 200; }, "$date = \"06-05-100\";\n"},
    // clang-format on
};

TEST(PullFileDetails, ChangeWhatTheyShould) {
  for (const detail_case& row : DETAILS) {
    settings_record settings;
    fill_settings(settings);
    LiveRecord live = fully_equipped_station();
    moment now = spring_morning();
    row.change(live, now);
    outgoing_text text;
    row.file.compose(text, {settings, live, now, ORDINARY_BOARD});
    EXPECT_NE(text.view().find(row.holds), std::string_view::npos) << row.holds << "not in\n" << text.c_str();
  }
}

}  // namespace
}  // namespace skypost::testing
