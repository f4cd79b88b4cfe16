#include "support/station.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "live/report_parser.h"
#include "settings/defaults.h"

namespace skypost::testing {
namespace {

void copy_text(live_text& destination, const char* text) {
  std::strncpy(destination, text, sizeof destination - 1);
}

}  // namespace

LiveRecord fully_equipped_station() {
  LiveRecord live{};
  live.temp10 = 215;
  live.hum = 57;
  live.dew10 = 100;
  live.press10 = 9874;
  live.height = 513;
  live.altimeter10 = 10140;
  live.sealevel10 = 10132;
  live.winddir = 225;
  copy_text(live.winddirstr, "SW");
  copy_text(live.winddirstren, "WSW");
  live.wind10 = 36;
  live.gust10 = 100;
  live.chill10 = 198;
  live.rain = 12;
  live.uv10 = 37;
  live.solar10 = 4567;
  live.indoortemp10 = 221;
  live.indoorhum = 45;
  live.last15mraintotal10 = 3;
  live.last15mtemp10 = 214;
  live.last15msealevel10 = 10131;
  live.last15mmaxgust10 = 72;
  live.last15mwind10 = 52;
  live.last15mwinddir = 230;
  live.last60mraintotal10 = 24;
  live.last24hraintotal10 = 85;
  live.last60mmaxsolar10 = 5230;
  live.last60mmaxgust10 = 81;
  live.last60mpresstrend = 1;
  live.todaytemp10 = 203;
  live.todaymaxtemp10 = 228;
  live.todaymaxtemptime = 1336302180;
  copy_text(live.todaymaxtemptimestr, "13:03");
  live.todaymintemp10 = -35;
  live.todaymintemptime = 1336273920;
  copy_text(live.todaymintemptimestr, "05:12");
  live.todaymaxdew10 = 118;
  copy_text(live.todaymaxdewtimestr, "12:21");
  live.todaymindew10 = -48;
  copy_text(live.todaymindewtimestr, "04:40");
  live.todayminchill10 = -62;
  copy_text(live.todayminchilltimestr, "05:02");
  live.todayhum = 61;
  live.todaymaxhum = 93;
  live.todaymaxhumtime = 1336273260;
  copy_text(live.todaymaxhumtimestr, "05:01");
  live.todayminhum = 41;
  live.todayminhumtime = 1336303800;
  copy_text(live.todayminhumtimestr, "13:30");
  live.todaymaxuv10 = 52;
  copy_text(live.todaymaxuvtimestr, "12:45");
  live.todaymaxsolar10 = 7120;
  copy_text(live.todaymaxsolartimestr, "12:50");
  live.todaymaxsealevel10 = 10151;
  live.todaymaxsealeveltime = 1336255260;
  copy_text(live.todaymaxsealeveltimestr, "00:01");
  live.todayminsealevel10 = 10119;
  live.todayminsealeveltime = 1336284300;
  copy_text(live.todayminsealeveltimestr, "08:05");
  live.todaymaxgust10 = 124;
  copy_text(live.todaymaxgusttimestr, "03:33");
  live.todaymaxwind10 = 67;
  copy_text(live.todaymaxwindtimestr, "03:35");
  live.todaymaxrainrate10 = 45;
  copy_text(live.todaymaxrainratetimestr, "02:22");
  live.todayraintotal10 = 64;
  live.monthmaxtemp10 = 257;
  live.monthmintemp10 = -41;
  live.monthmaxdew10 = 152;
  live.monthmindew10 = -55;
  live.monthminchill10 = -78;
  live.monthmaxhum = 97;
  live.monthminhum = 28;
  live.monthmaxuv10 = 61;
  live.monthmaxsolar10 = 8800;
  live.monthmaxsealevel10 = 10293;
  live.monthminsealevel10 = 9985;
  live.monthmaxgust10 = 187;
  live.monthmaxrainrate10 = 220;
  live.monthraintotal10 = 313;
  live.yearmaxtemp10 = 301;
  live.yearmintemp10 = -157;
  live.yearmaxdew10 = 171;
  live.yearmindew10 = -203;
  live.yearminchill10 = -248;
  live.yearmaxhum = 99;
  live.yearminhum = 19;
  live.yearmaxuv10 = 72;
  live.yearmaxsolar10 = 9510;
  live.yearmaxsealevel10 = 10411;
  live.yearminsealevel10 = 9792;
  live.yearmaxgust10 = 276;
  live.yearmaxrainrate10 = 614;
  live.yearraintotal10 = 2874;
  copy_text(live.sunrise, "05:41");
  copy_text(live.sunset, "20:37");
  for (int i = 0; i < 6; ++i) live.extratemp10[i] = 181 + 13 * i;
  return live;
}

LiveRecord sparse_station() {
  reset_live_record();
  LiveRecord live = live_record;
  live.temp10 = 215;
  live.hum = 57;
  live.dew10 = 100;
  return live;
}

void fill_settings(settings_record& settings) {
  std::memset(&settings, 0, sizeof settings);
  set_default_settings(settings);
  settings.set_text(wunderground_id, "IBERLIN42");
  settings.set_text(wunderground_password, "wu&pass#1");
  settings.set_text(weatherflow_id, "WF-ID");
  settings.set_text(weatherflow_password, "wf\"pass");
  settings.set_text(metoffice_site_id, "site-4711");
  settings.set_text(metoffice_site_key, "123456");
  settings.set_text(hamweather_id, "HAMID");
  settings.set_text(hamweather_password, "ham`pass`");
  settings.set_text(weatherbug_id, "BUGID");
  settings.set_text(weatherbug_num, "29118");
  settings.set_text(weatherbug_password, "bug$pass");
  settings.set_text(awekas_user, "awekasuser");
  settings.set_text(awekas_password, "abc");
  settings.set_text(wedaal_user, "wedaaluser");
  settings.set_text(wedaal_password, "abc");
  settings.set_text(windfinder_name, "windname");
  settings.set_text(windfinder_password, "wind pass");
  settings.set_text(windit_id, "windit-7");
  settings.set_integer(idokep_enabled, 1);
  settings.set_text(idokep_user, "idouser");
  settings.set_text(idokep_password, "ido\\pass");
  settings.set_text(wetterarchiv_user, "archivuser");
  settings.set_text(wetterarchiv_password, "archiv$(id)");
  settings.set_text(anythingweather_user, "anyuser");
  settings.set_text(anythingweather_password, "any&pass");
  settings.set_text(meteonews_password, "m@t:e/o%n$ws");
  settings.set_text(meteonews_mac, "00:AA:BB:CC:DD:EE");
  settings.set_text(shnetz_id, "4711");
  settings.set_text(shnetz_password, "abc");
  settings.set_text(regiowetter_bw_id, "bw-12");
  settings.set_text(regiowetter_bw_account, "bw-account");
  settings.set_text(regiowetter_id, "regio-3");
  settings.set_text(sauerlandwetter_id, "sauer-5");
  settings.set_text(sauerlandwetter_password, "abc");
  settings.set_text(wetterring_secret, "ring&secret");
  settings.set_text(meteoclimatic_station, "ESCAT0800000008001A");
  settings.set_text(wetterspiegel_id, "spiegel-9");
  settings.set_text(cwop_id, "N0CALL");
  settings.set_text(aprs_call_sign, "DL1ABC-13");
  settings.set_text(aprs_host, "127.0.0.1");
  settings.set_integer(aprs_passcode, 12345);
  settings.set_integer(longitude_degrees, 8);
  settings.set_integer(longitude_minutes, 18);
  settings.set_integer(longitude_seconds, 0);
  settings.set_integer(latitude_degrees, 47);
  settings.set_integer(latitude_minutes, 3);
  settings.set_integer(latitude_seconds, 30);
  settings.set_integer(aprs_pressure_kind, 1);
}

moment spring_morning() {
  setenv("TZ", "Europe/Berlin", 1);
  return moment_at(1'336'280'889);
}

std::string read_whole_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace skypost::testing
