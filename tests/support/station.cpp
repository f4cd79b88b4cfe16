#include "support/station.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/endpoints.h"
#include "live/live_table.h"
#include "run/run_list.h"
#include "settings/defaults.h"
#include "settings/field_descriptions.h"
#include "sim/folder.h"
#include "sim/sensors.h"

namespace skypost::testing {
LiveRecord fully_equipped_station() {
  return {
      // clang-format off
      .temp10 = 215, .hum = 57, .dew10 = 100,
      .press10 = 9874, .height = 513, .altimeter10 = 10140, .sealevel10 = 10132,
      .winddir = 225, .winddirstr = "SW", .winddirstren = "WSW", .wind10 = 36, .gust10 = 100, .chill10 = 198,
      .rain = 12, .uv10 = 37, .solar10 = 4567,
      .indoortemp10 = 221, .indoorhum = 45, .extratemp10 = {181, 194, 207, 220, 233, 246},

      .last15mraintotal10 = 3, .last15mtemp10 = 214, .last15msealevel10 = 10131,
      .last15mmaxgust10 = 72, .last15mwind10 = 52, .last15mwinddir = 230,
      .last60mraintotal10 = 24, .last24hraintotal10 = 85,
      .last60mmaxsolar10 = 5230, .last60mmaxgust10 = 81, .last60mpresstrend = 1,

      .todaytemp10 = 203,
      .todaymaxtemp10 = 228,       .todaymaxtemptime = 1'336'302'180,     .todaymaxtemptimestr = "13:03",
      .todaymintemp10 = -35,       .todaymintemptime = 1'336'273'920,     .todaymintemptimestr = "05:12",
      .todaymaxdew10 = 118,                                               .todaymaxdewtimestr = "12:21",
      .todaymindew10 = -48,                                               .todaymindewtimestr = "04:40",
      .todayminchill10 = -62,                                             .todayminchilltimestr = "05:02",
      .todayhum = 61,
      .todaymaxhum = 93,           .todaymaxhumtime = 1'336'273'260,      .todaymaxhumtimestr = "05:01",
      .todayminhum = 41,           .todayminhumtime = 1'336'303'800,      .todayminhumtimestr = "13:30",
      .todaymaxuv10 = 52,                                                 .todaymaxuvtimestr = "12:45",
      .todaymaxsolar10 = 7120,                                            .todaymaxsolartimestr = "12:50",
      .todaymaxsealevel10 = 10151, .todaymaxsealeveltime = 1'336'255'260, .todaymaxsealeveltimestr = "00:01",
      .todayminsealevel10 = 10119, .todayminsealeveltime = 1'336'284'300, .todayminsealeveltimestr = "08:05",
      .todaymaxgust10 = 124,                                              .todaymaxgusttimestr = "03:33",
      .todaymaxwind10 = 67,                                               .todaymaxwindtimestr = "03:35",
      .todaymaxrainrate10 = 45,                                           .todaymaxrainratetimestr = "02:22",
      .todayraintotal10 = 64,

      .monthmaxtemp10 = 257, .monthmintemp10 = -41,
      .monthmaxdew10 = 152, .monthmindew10 = -55, .monthminchill10 = -78,
      .monthmaxhum = 97, .monthminhum = 28,
      .monthmaxuv10 = 61, .monthmaxsolar10 = 8800,
      .monthmaxsealevel10 = 10293, .monthminsealevel10 = 9985,
      .monthmaxgust10 = 187, .monthmaxrainrate10 = 220, .monthraintotal10 = 313,

      .yearmaxtemp10 = 301, .yearmintemp10 = -157,
      .yearmaxdew10 = 171, .yearmindew10 = -203, .yearminchill10 = -248,
      .yearmaxhum = 99, .yearminhum = 19,
      .yearmaxuv10 = 72, .yearmaxsolar10 = 9510,
      .yearmaxsealevel10 = 10411, .yearminsealevel10 = 9792,
      .yearmaxgust10 = 276, .yearmaxrainrate10 = 614, .yearraintotal10 = 2874,

      .sunrise = "05:41", .sunset = "20:37",
      // clang-format on
  };
}

LiveRecord sparse_station() {
  LiveRecord live;
  std::int32_t numbers[sizeof live / sizeof(std::int32_t)];
  std::fill(std::begin(numbers), std::end(numbers), MISSING_VALUE);
  std::memcpy(&live, numbers, sizeof live);
  for (const live_row& row : LIVE_TABLE)
    if (row.text != nullptr) std::strcpy(live.*row.text, "---");
  live.winddirstr[0] = live.winddirstren[0] = '\0';
  live.height = live.todaymaxtemptime = live.todaymintemptime = live.todaymaxhumtime = 0;
  live.todayminhumtime = live.todaymaxsealeveltime = live.todayminsealeveltime = 0;
  live.temp10 = 215;
  live.hum = 57;
  live.dew10 = 100;
  return live;
}

void fill_settings(settings_record& settings) {
  std::memset(&settings, 0, sizeof settings);
  set_default_settings(settings);
  // clang-format off
  constexpr std::pair<const text_field&, const char*> TEXTS[] = {
      {wunderground_id, "IBERLIN42"},            {wunderground_password, "wu&pass#1"},
      {weatherflow_id, "WF-ID"},                 {weatherflow_password, "wf\"pass"},
      {metoffice_site_id, "site-4711"},          {metoffice_site_key, "123456"},
      {hamweather_id, "HAMID"},                  {hamweather_password, "ham`pass`"},
      {weatherbug_id, "BUGID"},                  {weatherbug_password, "bug$pass"},
      {weatherbug_num, "29118"},
      {awekas_user, "awekasuser"},               {awekas_password, "abc"},
      {wedaal_user, "wedaaluser"},               {wedaal_password, "abc"},
      {windfinder_name, "windname"},             {windfinder_password, "wind pass"},
      {windit_id, "windit-7"},
      {idokep_user, "idouser"},                  {idokep_password, "ido\\pass"},
      {wetterarchiv_user, "archivuser"},         {wetterarchiv_password, "archiv$(id)"},
      {anythingweather_user, "anyuser"},         {anythingweather_password, "any&pass"},
      {meteonews_mac, "00:AA:BB:CC:DD:EE"},      {meteonews_password, "m@t:e/o%n$ws"},
      {shnetz_id, "4711"},                       {shnetz_password, "abc"},
      {regiowetter_bw_id, "bw-12"},              {regiowetter_bw_account, "bw-account"},
      {regiowetter_id, "regio-3"},
      {sauerlandwetter_id, "sauer-5"},           {sauerlandwetter_password, "abc"},
      {wetterring_secret, "ring&secret"},
      {meteoclimatic_station, "ESCAT0800000008001A"},
      {wetterspiegel_id, "spiegel-9"},
      {cwop_id, "N0CALL"},
      {aprs_call_sign, "DL1ABC-13"},             {aprs_host, "127.0.0.1"},
  };
  constexpr std::pair<const integer_field&, std::int32_t> NUMBERS[] = {
      {idokep_enabled, 1},
      {longitude_degrees, 8}, {longitude_minutes, 18}, {longitude_seconds, 0},
      {latitude_degrees, 47}, {latitude_minutes, 3},   {latitude_seconds, 30},
      {aprs_passcode, 12345}, {aprs_pressure_kind, 1},
  };
  // clang-format on
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text() && settings.text(row.as_text()).empty() &&
        row.group != std::string_view("sensors"))
      settings.set_text(row.as_text(), row.name);
  for (const auto& [field, text] : TEXTS) settings.set_text(field, text);
  for (const auto& [field, number] : NUMBERS) settings.set_integer(field, number);
}

void switch_everything_on(settings_record& settings) {
  fill_settings(settings);
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.kind == field_kind::flag) settings.set_integer(row.as_integer(), 1);
  sim::select_sensors(settings);
}

std::string local_servers() {
  std::string lines;
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row) {
    const std::string server = endpoint_value(endpoint{row});
    const std::size_t scheme_end = server.find("://");
    const std::string scheme = scheme_end == std::string::npos ? "" : server.substr(0, scheme_end + 3);
    if (server.find('@') == std::string::npos)
      lines += std::string(endpoint_name(endpoint{row})) + " = " + scheme + "127.0.0.1\n";
  }
  return lines;
}

void set_rapid_fire(settings_record& settings, std::int32_t wunderground, std::int32_t weatherflow) {
  settings.set_integer(wunderground_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_enabled, wunderground != 0);
  settings.set_integer(wunderground_rapid_interval, wunderground);
  settings.set_integer(weatherflow_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_enabled, weatherflow != 0);
  settings.set_integer(weatherflow_rapid_interval, weatherflow);
}

moment spring_morning() {
  setenv("TZ", "Europe/Berlin", 1);
  return moment_at(1'336'280'889);
}

std::string composed(const outgoing& what, const settings_record& settings, const LiveRecord& live) {
  outgoing_text text;
  what.compose(text, {settings, live, spring_morning(), ORDINARY_BOARD});
  EXPECT_FALSE(text.was_cut());
  return text.c_str();
}

std::string composed_now(const outgoing& what) {
  outgoing_text text;
  what.compose(text, *current_station());
  return text.c_str();
}

std::vector<const outgoing*> everything_handed_out() {
  std::vector<const outgoing*> all;
  for_each_outgoing([&](const outgoing& what) {
    for (const outgoing* const other : all)
      if (std::string_view(other->id) == what.id)
        throw std::logic_error("run_list.cpp hands out two texts with the id " + std::string(what.id));
    all.push_back(&what);
  });
  return all;
}

std::string read_whole_file(const std::string& path) {
  EXPECT_TRUE(std::filesystem::exists(path)) << path;
  return sim::read_file(path);
}

}  // namespace skypost::testing
