// What a session sends, byte for byte: one known packet, and what changes in it when one value changes.

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <variant>

#include "channels/channels.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

constexpr char LOGIN[] = "User N0CALL pass -1 vers nimbulog\r\n";
constexpr char PACKET[] =
    "N0CALL>APRS,TCPXX*:@151407z4703.50N/00818.00E_225/008g016t071r009p033P025b10132h57L456eNB49\r\n";

struct sender {
  settings_record settings{};
  LiveRecord live = fully_equipped_station();
};

sender example_sender() {
  sender result;
  fill_settings(result.settings);
  result.settings.set_text(aprs_call_sign, "N0CALL");
  return result;
}

// 2024-03-15 14:07:00 UTC, which is the 16th, 03:07, at the station.
std::string text_of(const outgoing& what, const sender& from) {
  setenv("TZ", "Pacific/Auckland", 1);
  outgoing_text text;
  what.compose(text, {from.settings, from.live, moment_at(1'710'511'620), ORDINARY_BOARD});
  return text.c_str();
}

std::string with(std::string text, const std::string& piece, const std::string& by) {
  return text.replace(text.find(piece), piece.size(), by);
}

TEST(AprsPacket, OfCwop) { EXPECT_EQ(text_of(CWOP, example_sender()), std::string(LOGIN) + PACKET); }

TEST(AprsPacket, OfAprsHasItsPasscodeAndNoLuminosity) {
  for (const std::int32_t solar10 : {4567, 15237, MISSING_VALUE}) {
    sender at = example_sender();
    at.live.solar10 = solar10;
    EXPECT_EQ(text_of(APRS, at), "User N0CALL pass 12345 vers nimbulog\r\n" + with(PACKET, "L456", ""));
  }
}

TEST(AprsPacket, OfAnUnequippedStationAtAnUnsetPosition) {
  sender at = example_sender();
  at.live = sparse_station();
  for (const integer_field* field :
       {&latitude_degrees, &latitude_minutes, &latitude_seconds, &latitude_south, &longitude_degrees,
        &longitude_minutes, &longitude_seconds, &longitude_west})
    at.settings.set_integer(*field, -1);
  at.settings.set_integer(aprs_pressure_kind, 0);
  at.live.temp10 = at.live.hum = MISSING_VALUE;
  EXPECT_EQ(
      text_of(CWOP, at),
      std::string(LOGIN) +
          "N0CALL>APRS,TCPXX*:@151407z-1-1.-2S/-01-1.-2W_.../...g...t...r...p...P...b.....h..eNB49\r\n");
}

// What one other value or setting changes in the packet.
struct change_case {
  std::variant<std::int32_t LiveRecord::*, const integer_field*> what;
  std::int32_t value;
  const char* piece;
  const char* by;
};

TEST(AprsPacket, WritesEachValueInItsForm) {
  constexpr std::int32_t GREATEST = std::numeric_limits<std::int32_t>::max();
  const change_case cases[] = {
      // clang-format off
      {&LiveRecord::winddir,            7,             "_225",   "_007"},
      {&LiveRecord::wind10,             0,             "/008g",  "/000g"},
      {&LiveRecord::last15mmaxgust10,   6000,          "g016",   "g1342"},
      {&LiveRecord::temp10,             -200,          "t071",   "t-04"},
      {&LiveRecord::temp10,             -180,          "t071",   "t000"},
      {&LiveRecord::temp10,             -181,          "t071",   "t-01"},
      {&LiveRecord::temp10,             380,           "t071",   "t100"},
      {&LiveRecord::last60mraintotal10, 0,             "r009",   "r000"},
      {&LiveRecord::last60mraintotal10, 127,           "r009",   "r050"},
      {&LiveRecord::last24hraintotal10, 2540,          "p033",   "p1000"},
      {&LiveRecord::todayraintotal10,   1,             "P025",   "P000"},
      {&LiveRecord::sealevel10,         9874,          "b10132", "b09874"},
      {&LiveRecord::sealevel10,         MISSING_VALUE, "b10132", "b....."},
      {&LiveRecord::hum,                100,           "h57",    "h00"},
      {&LiveRecord::hum,                99,            "h57",    "h99"},
      {&LiveRecord::hum,                5,             "h57",    "h05"},
      {&LiveRecord::hum,                MISSING_VALUE, "h57",    "h.."},
      {&LiveRecord::solar10,            9,             "L456",   "L000"},
      {&LiveRecord::solar10,            9999,          "L456",   "L999"},
      {&LiveRecord::solar10,            10000,         "L456",   "l000"},
      {&LiveRecord::solar10,            15237,         "L456",   "l523"},
      {&LiveRecord::solar10,            20000,         "L456",   "l1000"},
      {&LiveRecord::solar10,            MISSING_VALUE, "L456",   ""},
      {&latitude_degrees,               7,             "z4703",  "z0703"},
      {&latitude_seconds,               0,             ".50N",   ".00N"},
      {&latitude_seconds,               1,             ".50N",   ".02N"},
      {&latitude_seconds,               59,            ".50N",   ".98N"},
      {&latitude_seconds,               GREATEST,      ".50N",   ".3579139412N"},
      {&latitude_south,                 1,             "0N",     "0S"},
      {&longitude_degrees,              123,           "/00818", "/12318"},
      {&longitude_minutes,              4,             "/00818", "/00804"},
      {&longitude_seconds,              59,            ".00E",   ".98E"},
      {&longitude_west,                 -1,            "0E",     "0W"},
      {&aprs_pressure_kind,             0,             "b10132", "b10140"},
      {&aprs_pressure_kind,             2,             "b10132", "b10140"},
      // clang-format on
  };
  for (const change_case& row : cases) {
    sender at = example_sender();
    if (const auto* field = std::get_if<std::int32_t LiveRecord::*>(&row.what))
      at.live.** field = row.value;
    else
      at.settings.set_integer(*std::get<const integer_field*>(row.what), row.value);
    EXPECT_EQ(text_of(CWOP, at), LOGIN + with(PACKET, row.piece, row.by)) << row.value;
  }
}

}  // namespace
}  // namespace skypost::testing
