// What single values, settings, times and boards change in what is handed out, beyond the two stations of the
// golden texts. Each change must do what its row says and nothing else: networks read files by their lines and
// records by their places.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <string>

#include "channels/channels.h"
#include "networks/networks.h"
#include "pullfiles/pullfiles.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// The fully equipped station to begin with.
struct test_station {
  settings_record settings{};
  LiveRecord live = fully_equipped_station();
  moment now = spring_morning();
  board host = ORDINARY_BOARD;
};

using station_change = std::function<void(test_station& at)>;

station_change set(std::int32_t LiveRecord::*field, std::int32_t value) {
  return [=](test_station& at) { at.live.*field = value; };
}
station_change set(live_text LiveRecord::*field, const char* text) {
  return [=](test_station& at) { std::strcpy(at.live.*field, text); };
}
station_change set(const integer_field& field, std::int32_t value) {
  return [&field, value](test_station& at) { at.settings.set_integer(field, value); };
}
station_change set(const text_field& field, const char* text) {
  return [&field, text](test_station& at) { at.settings.set_text(field, text); };
}
station_change at_time(std::time_t time) {
  return [=](test_station& at) { at.now = moment_at(time); };
}
station_change at_minute(int minute) {
  return [=](test_station& at) { at.now.utc.tm_min = minute; };
}
station_change in_year(int year) {
  return [=](test_station& at) { at.now.local.tm_year = year - 1900; };
}
station_change on_board(const char* platform, const char* address) {
  return [=](test_station& at) { at.host = {platform, address}; };
}
void at_unset_position(test_station& at) {
  for (const integer_field* field :
       {&latitude_degrees, &latitude_minutes, &latitude_seconds, &latitude_south, &longitude_degrees,
        &longitude_minutes, &longitude_seconds, &longitude_west})
    at.settings.set_integer(*field, -1);
}

std::string text_of(const outgoing& what, const station_change& change) {
  test_station at;
  fill_settings(at.settings);
  change(at);
  outgoing_text text;
  what.compose(text, {at.settings, at.live, at.now, at.host});
  return text.c_str();
}

std::string with(std::string text, const std::string& piece, const std::string& by) {
  return text.replace(text.find(piece), piece.size(), by);
}

struct change_case {
  const outgoing& what;
  station_change change;
  const char* piece;  // of what the golden texts hold
  const char* by;
};

constexpr std::int32_t GREATEST = std::numeric_limits<std::int32_t>::max();
constexpr std::time_t PAST_MIDNIGHT = 1'236'209'400;  // 2009-03-05 00:30 in Berlin, the day before in UTC

const change_case CASES[] = {
    // clang-format off
    // Numbers: signs and halves are where such programs went wrong. Halves go away from zero.
    {WUNDERGROUND,   set(&LiveRecord::temp10,             -208),          "&tempf=70.7", "&tempf=-5.4"},
    {WUNDERGROUND,   set(&LiveRecord::temp10,             GREATEST),      "&tempf=70.7", "&tempf=386547088.5"},  // no overflow
    {WUNDERGROUND,   set(&LiveRecord::winddir,            GREATEST),      "dir=225",     "dir=2147483647"},
    {PWSWEATHER,     set(&LiveRecord::solar10,            -57),           "tion=457",    "tion=-6"},
    {PWSWEATHER,     set(&LiveRecord::solar10,            -25),           "tion=457",    "tion=-3"},
    {PWSWEATHER,     set(&LiveRecord::solar10,            -4),            "tion=457",    "tion=0"},  // no "-0"
    {PWSWEATHER,     set(&LiveRecord::solar10,            -5),            "tion=457",    "tion=-1"},
    {METEONEWS,      set(&LiveRecord::temp10,             -178),          "&tt=21.5",    "&tt=-17.8"},
    {METEONEWS,      set(&LiveRecord::temp10,             0),             "&tt=21.5",    "&tt=0.0"},
    {METEONEWS,      set(&LiveRecord::temp10,             -9998),         "&tt=21.5",    "&tt=-999.8"},  // the least
    {METEONEWS,      set(&LiveRecord::winddir,            -9998),         "&dd=225",     "&dd=-9998"},
    {BORGERVEJR,     set(&LiveRecord::temp10,             -5),            "21.5C",       "-0.5C"},
    {BORGERVEJR,     set(&LiveRecord::wind10,             25),            "Spd: 4",      "Spd: 3"},
    {BORGERVEJR,     set(&LiveRecord::last15mmaxgust10,   35),            "Gust: 7",     "Gust: 4"},
    // Requests.
    {WEDAAL_PUSH,    set(&LiveRecord::todaymaxgusttimestr, "---"),        ";03:33;",     ";;"},
    {WEDAAL_PUSH,    set(&LiveRecord::todaymaxgust10,     MISSING_VALUE), ";44.6;03:33;", ";;;"},
    {IDOKEP,         set(idokep_enabled,                  2),             "//automata.", "//pro."},
    {IDOKEP,         set(idokep_enabled,                  3),             "",            ""},
    {WETTERARCHIV,   set(&LiveRecord::wind10,             MISSING_VALUE), "",            ""},
    {SHNETZ,         set(&LiveRecord::winddirstr,         ""),            ";SW;",        ";---;"},
    {SHNETZ,         set(&LiveRecord::winddirstr,         "\"N&"),        ";SW;",        ";\\\"N%26;"},
    {WETTERRING,     set(&LiveRecord::winddirstr,         "\"N&"),        "dir=SW&",     "dir=\\\"N%26&"},
    {WETTERRING,     set(&LiveRecord::winddirstr,         ""),            "dir=SW&",     "dir=&"},
    {WETTERRING,     set(&LiveRecord::winddir,            MISSING_VALUE), "&wind_dir=SW", ""},
    {WETTERRING,     set(&LiveRecord::solar10,            4565),          "",            ""},
    {WETTERRING,     set(&LiveRecord::todaymintemptime,   0),             "min_t=1336273920", "min_t=0"},
    // MeteoNews: the time of the last full five minutes; boards with a generic address have the user in the settings.
    {METEONEWS,      at_minute(0),                                        "%3A05%3A00",  "%3A00%3A00"},
    {METEONEWS,      at_minute(4),                                        "%3A05%3A00",  "%3A00%3A00"},
    {METEONEWS,      at_minute(5),                                        "%3A05%3A00",  "%3A05%3A00"},
    {METEONEWS,      at_minute(59),                                       "%3A05%3A00",  "%3A55%3A00"},
    {METEONEWS,      on_board("X86", "00:30:e0:00:01:05"),                "00-1a-2b-3c-4d-5e", "00-aa-bb-cc-dd-ee"},
    {METEONEWS,      on_board("X86", "00:01:C0:04:C5:2E"),                "00-1a-2b-3c-4d-5e", "00-aa-bb-cc-dd-ee"},
    {METEONEWS,      on_board(nullptr, "0E:AD:00:00:00:03"),              "00-1a-2b-3c-4d-5e", "00-aa-bb-cc-dd-ee"},
    {METEONEWS,      on_board("X86", "00:30:E0:00:01:06"),                "00-1a-2b-3c-4d-5e", "00-30-e0-00-01-06"},
    {METEONEWS,      on_board("X86", ""),                                 "00-1a-2b-3c-4d-5e", ""},
    // Pull files.
    {AWEKAS_PULL,    set(&LiveRecord::todayraintotal10,   0),             "\n6.4\n",     "\n0.0\n"},
    {WEDAAL_PULL,    set(&LiveRecord::todaymaxgust10,     MISSING_VALUE), "\n44.6\n03:33\n", "\n\n\n"},
    {WEDAAL_PULL,    set(&LiveRecord::todaymaxgusttimestr, "---"),        "\n03:33\n",   "\n\n"},
    {WEDAAL_PULL,    at_time(951'778'800),                                "07:08\n06.05.12", "00:00\n29.02.00"},
    {WETTERPAGE24,   in_year(2100),                                       "06.05.12",    "06.05.100"},
    {METEOCLIMATIC,  set(&LiveRecord::temp10,             -4),            "TMP=21.5",    "TMP=-0.4"},
    {WETTERSPIEGEL,  set(&LiveRecord::temp10,             -4),            "\ntemp: 21.5", "\ntemp: -0.4"},
    {WETTERSPIEGEL,  set(&LiveRecord::rain,               5),             "",            ""},
    {WETTERSPIEGEL,  set(&LiveRecord::rain,               4),             "RR1: 1",      "RR1: 0"},
    {HETWEERACTUEEL, set(&LiveRecord::last60mpresstrend,  0),             "Raising",     "Steady"},
    {HETWEERACTUEEL, set(&LiveRecord::last60mpresstrend,  -1),            "Raising",     "Falling"},
    {HETWEERACTUEEL, set(&LiveRecord::last60mpresstrend,  2),             "Raising",     "---"},
    {HETWEERACTUEEL, set(&LiveRecord::todaymaxuv10,       MISSING_VALUE), "\"5.2\";\n$hiUVTime = \"12:45\"", "\"---\";\n$hiUVTime = \"---\""},
    {HETWEERACTUEEL, set(&LiveRecord::todaymaxuvtimestr,  "---"),         "$hiUVTime = \"12:45\"", "$hiUVTime = \"---\""},
    {HETWEERACTUEEL, at_time(PAST_MIDNIGHT),
     "$date = \"06-05-12\";\n$time = \"07:08\";\n$stationDate = \"06-05-12\";\n$stationTime = \"07:08\";\n"
     "$utcdate = \"06-05-12\";\n$utctime = \"05:08\";\n",
     "$date = \"05-03-09\";\n$time = \"00:30\";\n$stationDate = \"05-03-09\";\n$stationTime = \"00:30\";\n"
     "$utcdate = \"04-03-09\";\n$utctime = \"23:30\";\n"},
    {HETWEERACTUEEL, in_year(2100),                                       "$date = \"06-05-12\";\n$time = \"07:08\";\n$stationDate = \"06-05-12\"", "$date = \"06-05-100\";\n$time = \"07:08\";\n$stationDate = \"06-05-100\""},
    // The APRS packet.
    {CWOP,           at_time(PAST_MIDNIGHT),                              "@060508z",    "@042330z"},
    {CWOP,           set(&LiveRecord::winddir,            7),             "_225",        "_007"},
    {CWOP,           set(&LiveRecord::wind10,             0),             "/008g",       "/000g"},
    {CWOP,           set(&LiveRecord::last15mmaxgust10,   6000),          "g016",        "g1342"},
    {CWOP,           set(&LiveRecord::temp10,             -200),          "t071",        "t-04"},
    {CWOP,           set(&LiveRecord::temp10,             -180),          "t071",        "t000"},
    {CWOP,           set(&LiveRecord::temp10,             -181),          "t071",        "t-01"},
    {CWOP,           set(&LiveRecord::temp10,             MISSING_VALUE), "t071",        "t..."},
    {CWOP,           set(&LiveRecord::last60mraintotal10, 0),             "r009",        "r000"},
    {CWOP,           set(&LiveRecord::sealevel10,         9874),          "b10132",      "b09874"},
    {CWOP,           set(&LiveRecord::sealevel10,         MISSING_VALUE), "b10132",      "b....."},
    {CWOP,           set(&LiveRecord::hum,                100),           "h57",         "h00"},
    {CWOP,           set(&LiveRecord::hum,                5),             "h57",         "h05"},
    {CWOP,           set(&LiveRecord::hum,                MISSING_VALUE), "h57",         "h.."},
    {CWOP,           set(&LiveRecord::solar10,            9),             "L456",        "L000"},
    {CWOP,           set(&LiveRecord::solar10,            9999),          "L456",        "L999"},
    {CWOP,           set(&LiveRecord::solar10,            10000),         "L456",        "l000"},
    {CWOP,           set(&LiveRecord::solar10,            15237),         "L456",        "l523"},
    {CWOP,           set(&LiveRecord::solar10,            20000),         "L456",        "l1000"},
    {APRS,           set(&LiveRecord::solar10,            15237),         "",            ""},
    {CWOP,           set(latitude_degrees,                7),             "z4703",       "z0703"},
    {CWOP,           set(latitude_seconds,                1),             ".50N",        ".02N"},
    {CWOP,           set(latitude_seconds,                59),            ".50N",        ".98N"},
    {CWOP,           set(latitude_seconds,                GREATEST),      ".50N",        ".3579139412N"},
    {CWOP,           set(latitude_south,                  1),             "0N",          "0S"},
    {CWOP,           set(longitude_minutes,               4),             "/00818",      "/00804"},
    {CWOP,           set(longitude_seconds,               59),            ".00E",        ".98E"},
    {CWOP,           set(longitude_west,                  -1),            "0E",          "0W"},
    {CWOP,           at_unset_position,                                   "z4703.50N/00818.00E", "z-1-1.-2S/-01-1.-2W"},
    {CWOP,           set(aprs_pressure_kind,              0),             "b10132",      "b10140"},
    {CWOP,           set(aprs_pressure_kind,              2),             "b10132",      "b10140"},
    // The sender of the mail: one line, or the appliance's own.
    {BORGERVEJR,     set(sender_address, "Owner <owner@example.org>"),    "root@localhost", "Owner <owner@example.org>"},
    {BORGERVEJR,     set(sender_address, "owner@example.org\r\nbcc: all@example.org"), "root@localhost", "owner@example.org"},
    {BORGERVEJR,     set(sender_address, "owner@example.org\n\nbuy this"), "root@localhost", "owner@example.org"},
    {BORGERVEJR,     set(sender_address, "\nbcc: all@example.org"),       "",            ""},
    // clang-format on
};

TEST(ChangedValues, ChangeTheirPieceAndNothingElse) {
  for (const change_case& row : CASES) {
    SCOPED_TRACE(std::string(row.what.id) + ": " + row.piece + " becomes " + row.by);
    const std::string before = text_of(row.what, [](auto&) {});
    ASSERT_NE(before.find(row.piece), std::string::npos) << before;
    EXPECT_EQ(text_of(row.what, row.change), with(before, row.piece, row.by));
  }
}

// An NSLU2 has its login in the URL, over plain http.
TEST(ChangedValues, OfANslu2PutTheLoginIntoThePlainUrlOfMeteonews) {
  const std::string secure = text_of(METEONEWS, [](auto&) {});
  const std::size_t options = secure.find("--http-user=");
  const std::string without = with(secure, secure.substr(options, secure.find("--post-data") - options), "");
  const auto on_nslu2 = [&](const char* address) { return on_board("NSLU2", address); };
  EXPECT_EQ(text_of(METEONEWS, on_nslu2("00:1A:2B:3C:4D:5E")),
            with(without, "https://", "http://00-1a-2b-3c-4d-5e:m%40t%3Ae%2Fo%25n\\$ws@"));
  EXPECT_EQ(text_of(METEONEWS,
                    [&](test_station& at) {
                      on_nslu2("00:30:E0:00:01:05")(at);
                      at.settings.set_text(meteonews_mac, "us@er");
                      at.settings.set_text(meteonews_password, "\"?#&[];`\\");
                    }),
            with(without, "https://", "http://us%40er:\\\"%3F%23%26%5B%5D%3B\\`\\\\@"));
}

}  // namespace
}  // namespace skypost::testing
