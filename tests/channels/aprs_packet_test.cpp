// What a session sends, byte for byte: one known packet, and what changes in it when one value changes.

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

#include "base/value.h"
#include "channels/aprs.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

constexpr char LOGIN[] = "User N0CALL pass -1 vers nimbulog\r\n";
constexpr char PACKET[] =
    "N0CALL>APRS,TCPXX*:@151407z4703.50N/00818.00E_225/008g016t054r000p010P005b10132h67L456eNB49\r\n";

struct station {
  settings_record settings;
  LiveRecord live;
};

station example_station() {
  station result{};
  fill_settings(result.settings);
  result.live = sparse_station();
  result.live.winddir = 225;
  result.live.wind10 = 36;
  result.live.last15mmaxgust10 = 72;
  result.live.temp10 = 123;
  result.live.last60mraintotal10 = 0;
  result.live.last24hraintotal10 = 25;
  result.live.todayraintotal10 = 13;
  result.live.sealevel10 = 10132;
  result.live.altimeter10 = 10140;
  result.live.hum = 67;
  result.live.solar10 = 4567;
  return result;
}

// 2024-03-15 14:07:00 UTC, which is the 16th, 03:07, at the station.
std::string text_of(const station& from, const char* call_sign, std::int32_t passcode, bool cwop) {
  setenv("TZ", "Pacific/Auckland", 1);
  aprs_text text;
  compose_aprs_text(text, from.settings, from.live, moment_at(1'710'511'620), call_sign, passcode, cwop);
  return text.c_str();
}

std::string with(std::string text, const std::string& piece, const std::string& by) {
  return text.replace(text.find(piece), piece.size(), by);
}

TEST(AprsPacket, OfCwop) {
  EXPECT_EQ(text_of(example_station(), "N0CALL", -1, true), std::string(LOGIN) + PACKET);
}

TEST(AprsPacket, OfAprsHasItsPasscodeAndNoLuminosity) {
  for (const std::int32_t solar10 : {4567, 15237, MISSING_VALUE}) {
    station at = example_station();
    at.live.solar10 = solar10;
    EXPECT_EQ(text_of(at, "N0CALL", 12345, false),
              "User N0CALL pass 12345 vers nimbulog\r\n" + with(PACKET, "L456", ""));
  }
}

TEST(AprsPacket, OfAnUnequippedStationAtAnUnsetPosition) {
  station at{.settings = {}, .live = sparse_station()};
  for (const integer_field* field :
       {&latitude_degrees, &latitude_minutes, &latitude_seconds, &latitude_south, &longitude_degrees,
        &longitude_minutes, &longitude_seconds, &longitude_west})
    at.settings.set_integer(*field, -1);
  at.live.temp10 = at.live.hum = MISSING_VALUE;
  EXPECT_EQ(
      text_of(at, "N0CALL", -1, true),
      std::string(LOGIN) +
          "N0CALL>APRS,TCPXX*:@151407z-1-1.-2S/-01-1.-2W_.../...g...t...r...p...P...b.....h..eNB49\r\n");
}

struct value_case {
  std::int32_t LiveRecord::*field;
  std::int32_t value;
  const char* piece;
  const char* by;
};

TEST(AprsPacket, WritesEachValueInItsForm) {
  const value_case cases[] = {
      // clang-format off
      {&LiveRecord::winddir,            7,             "_225",   "_007"},
      {&LiveRecord::wind10,             0,             "/008g",  "/000g"},
      {&LiveRecord::last15mmaxgust10,   6000,          "g016",   "g1342"},
      {&LiveRecord::temp10,             -200,          "t054",   "t-04"},
      {&LiveRecord::temp10,             -180,          "t054",   "t000"},
      {&LiveRecord::temp10,             -181,          "t054",   "t-01"},
      {&LiveRecord::temp10,             380,           "t054",   "t100"},
      {&LiveRecord::last60mraintotal10, 127,           "r000",   "r050"},
      {&LiveRecord::last24hraintotal10, 2540,          "p010",   "p1000"},
      {&LiveRecord::todayraintotal10,   1,             "P005",   "P000"},
      {&LiveRecord::sealevel10,         9874,          "b10132", "b09874"},
      {&LiveRecord::sealevel10,         MISSING_VALUE, "b10132", "b....."},
      {&LiveRecord::hum,                100,           "h67",    "h00"},
      {&LiveRecord::hum,                99,            "h67",    "h99"},
      {&LiveRecord::hum,                5,             "h67",    "h05"},
      {&LiveRecord::hum,                MISSING_VALUE, "h67",    "h.."},
      {&LiveRecord::solar10,            9,             "L456",   "L000"},
      {&LiveRecord::solar10,            9999,          "L456",   "L999"},
      {&LiveRecord::solar10,            10000,         "L456",   "l000"},
      {&LiveRecord::solar10,            15237,         "L456",   "l523"},
      {&LiveRecord::solar10,            20000,         "L456",   "l1000"},
      {&LiveRecord::solar10,            MISSING_VALUE, "L456",   ""},
      // clang-format on
  };
  for (const value_case& row : cases) {
    station at = example_station();
    at.live.*row.field = row.value;
    EXPECT_EQ(text_of(at, "N0CALL", -1, true), LOGIN + with(PACKET, row.piece, row.by)) << row.value;
  }
}

struct setting_case {
  const integer_field& field;
  std::int32_t value;
  const char* piece;
  const char* by;
};

TEST(AprsPacket, FollowsTheSettings) {
  constexpr std::int32_t GREATEST = std::numeric_limits<std::int32_t>::max();
  const setting_case cases[] = {
      // clang-format off
      {latitude_degrees,   7,        "z4703",  "z0703"},
      {latitude_seconds,   0,        ".50N",   ".00N"},
      {latitude_seconds,   1,        ".50N",   ".02N"},
      {latitude_seconds,   59,       ".50N",   ".98N"},
      {latitude_seconds,   GREATEST, ".50N",   ".3579139412N"},
      {latitude_south,     1,        "0N",     "0S"},
      {longitude_degrees,  123,      "/00818", "/12318"},
      {longitude_minutes,  4,        "/00818", "/00804"},
      {longitude_seconds,  59,       ".00E",   ".98E"},
      {longitude_west,     -1,       "0E",     "0W"},
      {aprs_pressure_kind, 0,        "b10132", "b10140"},
      {aprs_pressure_kind, 2,        "b10132", "b10140"},
      // clang-format on
  };
  for (const setting_case& row : cases) {
    station at = example_station();
    at.settings.set_integer(row.field, row.value);
    EXPECT_EQ(text_of(at, "N0CALL", -1, true), LOGIN + with(PACKET, row.piece, row.by)) << row.field.name;
  }
}

}  // namespace
}  // namespace skypost::testing
