#include "sim/networks.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace skypost::sim {
namespace {

// The accounts are full of characters that a shell or a URL would interpret, and must arrive as they are in the
// settings. So are the bad replies, which must reach the alarm script.
constexpr network_row NETWORKS[] = {
    // clang-format off
    {.name = "awekas-push", .endpoint = "awekas", .enabled = &awekas_enabled,
     .path = "/extern/eingabe_pruefung.php", .record = {"val", ';', 23},
     .account = {{&awekas_user, "awekas user", "val", 1}, {&awekas_password, "awe\"kas&#", "val", 2, true}},
     .origin = replies::known, .good = "OK\n", .bad = "too many requests - try again later\n",
     .failure = "upload to awekas: too many requests - try again later", .no_response = "no response from awekas"},
    {.name = "wedaal-push", .endpoint = "wedaal", .enabled = &wedaal_enabled,
     .path = "/get_wetter.php", .record = {"val", ';', 24},
     .account = {{&wedaal_user, "we`daal`", "val", 1}, {&wedaal_password, "we$(daal)", "val", 2, true}},
     .good = "OK\n", .bad = "unknown $(user) \"`&",
     .failure = "upload to wedaal: unknown $(user) \"`&", .no_response = "no response from wedaal"},
    {.name = "meteonews", .endpoint = "meteonews", .which = server::secured, .enabled = &meteonews_enabled,
     .method = "POST", .path = "/", .parameters = "time ppnn rh rrr rrr_sum glo uv tt dd ff fxx",
     .account = {{&meteonews_password, R"(m@t:e/o?n#e&w"s%`$x\y)"}},
     .good = "thank you\n", .bad_status = 401, .bad = "who are you\n",
     .failure = "upload to meteonews failed: Username/Password Authentication Failed."},
    {.name = "sauerlandwetter", .endpoint = "sauerlandwetter", .enabled = &sauerlandwetter_enabled,
     .path = "/wpas2/post.php", .record = {"val", ';', 54},
     .account = {{&sauerlandwetter_id, "sauer|land", "val", 3},
                 {&sauerlandwetter_password, "s&w", "val", 4, true}},
     .good = "Daten erfolgreich eingetragen\n", .bad = "Daten abgelehnt\r\n",
     .failure = "upload to sauerlandwetter failed: Daten abgelehnt"},
    {.name = "SH-Netz", .endpoint = "shnetz", .enabled = &shnetz_enabled,
     .path = "/sh-netz/daten.php", .record = {"daten", ';', 92},
     .account = {{&shnetz_id, "4711", "daten", 1}, {&shnetz_password, "sh netz\"", "daten", 2, true}},
     .good = "OK", .bad = "gesperrt",
     .failure = "upload to SH-Netz: gesperrt", .no_response = "no response from SH-Netz"},
    {.name = "windfinder", .endpoint = "windfinder", .enabled = &windfinder_enabled,
     .path = "/wind-cgi/nimbulogload.pl", .parameters = "date time airtemp windspeed gust winddir pressure rain",
     .account = {{&windfinder_name, "Nord & Süd", "name"}, {&windfinder_password, "wind;find>er", "password"}},
     .good = "<html>\n<body>\nOK\n</body>\n</html>\n", .bad = "<html>\n<body>\nERR\n</body>\n</html>\n",
     .failure = "upload to windfinder: ERR", .no_response = "no response from windfinder"},
    {.name = "windit", .endpoint = "windit", .enabled = &windit_enabled,
     .path = "/nimbulog/nimbulogload", .parameters = "d t at h ct ch wt ws wc wg wd p rd ra uv clid",
     .account = {{&windit_id, "windit#7", "id"}},
     .good = "OK", .bad = "unknown id\n",
     .failure = "upload to windit: unknown id", .no_response = "no response from windit"},
    {.name = "HAMweather/weather4u", .endpoint = "pwsweather", .enabled = &hamweather_enabled,
     .path = "/pwsupdate/pwsupdate.php",
     .parameters = "action dateutc winddir windspeedmph windgustmph humidity tempf rainin dailyrainin "
         "monthrainin yearrainin baromin dewptf UV solarradiation softwaretype",
     .account = {{&hamweather_id, "HAM1", "ID"}, {&hamweather_password, "ham\\pass\"word", "PASSWORD"}},
     .good = "<html><head><title>update</title></head>\n<body>\nData Logged and posted in METAR mirror.\n"
         "</body></html>\n",
     .bad = "<html><body>ERROR: no such <b>station</b></body></html>",
     .failure = "upload to HAMweather: ERROR: no such <b>station</b>",
     .no_response = "no response from HAMweather"},
    {.name = "wetterarchiv", .endpoint = "wetterarchiv", .enabled = &wetterarchiv_enabled,
     .path = "/interface/http/input.php",
     .parameters = "datum version windrichtung windstaerke feuchtigkeit temperatur niederschlagsmenge "
         "niederschlagsmenge_zeit luftdruck",
     .account = {{&wetterarchiv_user, "archiv user", "benutzername"},
                 {&wetterarchiv_password, "archiv`x`", "passwort"}},
     .good = "status=SUCCESS\n", .bad = "status=FAILED\nmessage=\"no\"\n",
     .failure = "upload to wetterarchiv failed: status=FAILEDmessage=\"no\"",
     .no_response = "no response from wetterarchiv"},
    {.name = "anythingweather", .endpoint = "anythingweather", .enabled = &anythingweather_enabled,
     .method = "POST", .path = "/feeds/load/WXDATAPOST.ASP", .parameters = "vsersion",
     .record = {"WXData", ',', 12},
     .account = {{&anythingweather_user, "any&user", "username"},
                 {&anythingweather_password, "any\"#$(w)", "password"}},
     .good = "data taken\n", .bad_status = 403, .bad = "go away\n",
     .failure = "upload to www.anythingweather.com failed: --*"},
    {.name = "wetterring", .endpoint = "wetterring", .enabled = &wetterring_enabled,
     .path = "/weatherboxx/",
     .parameters = "tm temp_c temp_d_min temp_d_min_t temp_y_max dewpoint_c baro_c hum_c rain_c wind_dir sun_watt_c",
     .account = {{&wetterring_secret, "r&i#n\"g", "secret"}},
     .good = "data stored successfully\n", .bad = "wrong secret",
     .failure = "upload to wetterring failed: wrong secret", .no_response = "no response from wetterring"},
    {.name = "regiowetter", .endpoint = "regiowetter", .enabled = &regiowetter_enabled,
     .path = "/admin/jobs/nimbulog.asp", .record = {"val", ';', 22},
     .account = {{&regiowetter_id, "regio<3>", "val", 1}},
     .good = "success", .bad = "Success with a capital letter",
     .failure = "upload to regiowetter failed: Success with a capital letter",
     .no_response = "no response from regiowetter"},
    {.name = "regiowetter-bw", .endpoint = "regiowetter_bw", .enabled = &regiowetter_bw_enabled,
     .path = "/data/nimbulog/get_nimbulog.php", .record = {"Data", ';', 23},
     .account = {{&regiowetter_bw_id, "bw-12", "Data", 1}, {&regiowetter_bw_account, "b&w#`x`", "Data", 23}},
     .good = "page 1\nSuccess\n", .bad = "two\nlines",
     .failure = "upload to regiowetter-bw failed: two lines", .no_response = "no response from regiowetter-bw"},
    {.name = "weather underground", .endpoint = "wunderground", .enabled = &wunderground_enabled,
     .path = "/weatherstation/updateweatherstation.php",
     .parameters = "action dateutc winddir windspeedmph windgustmph windspdmph_avg2 humidity tempf rainin "
         "dailyrainin baromin dewptf UV solarradiation indoortempf indoorhumidity temp2f temp7f "
         "softwaretype",
     .account = {{&wunderground_id, "INIMBU42", "ID"},
                 {&wunderground_password, R"(wu"p`id`$(id)&a=b#c\d'e)", "PASSWORD"}},
     .origin = replies::known, .good = "success\n", .bad_status = 401,
     .bad = "INVALIDPASSWORDID|Password or key and/or id are incorrect",
     .failure = "no response from weather underground", .no_response = "no response from weather underground"},
    {.name = "weatherflow", .endpoint = "weatherflow", .enabled = &weatherflow_enabled,
     .path = "/wxengine/rest/collection/weatherstation",
     .parameters = "action dateutc humidity tempf dewptf indoortempf temp2f temp7f softwaretype",
     .account = {{&weatherflow_id, "flow 7", "ID"}, {&weatherflow_password, "$HOME;|<>!*~", "PASSWORD"}},
     .good = "success\n", .bad = "invalid password",
     .failure = "upload to weatherflow failed: invalid password", .no_response = "no response from weatherflow"},
    {.name = "metoffice", .endpoint = "metoffice", .enabled = &metoffice_enabled,
     .path = "/automaticreading",
     .parameters = "dateutc winddir humidity tempf rainin dailyrainin baromin dewptf softwaretype",
     .account = {{&metoffice_site_id, "site-4711", "siteid"},
                 {&metoffice_site_key, "123456", "siteAuthenticationKey"}},
     .origin = replies::known, .good = "{}", .bad_status = 403, .bad = "{\"error\": \"no such site & `key`\"}",
     .failure = "no response from metoffice"},
    {.name = "weatherbug", .endpoint = "weatherbug", .enabled = &weatherbug_enabled,
     .path = "/data/livedata.aspx",
     .parameters = "dateutc winddir windspeedmph windgustmph humidity tempf rainin dailyrainin baromin dewptf "
         "UV solarradiation softwaretype",
     .account = {{&weatherbug_id, "BUG", "ID"},
                 {&weatherbug_num, "29118", "num"},
                 {&weatherbug_password, "bug$(touch x)", "PASSWORD"}},
     .good = "Successfully Received Live Data for Station\n", .bad = "unknown station",
     .failure = "upload to weather bug failed: unknown station", .no_response = "no response from weather bug"},
    {.name = "idokep", .endpoint = "idokep", .enabled = &idokep_enabled,
     .path = "/sendws.php", .parameters = "tipus p hom rh szelero szelirany csap1h csap szellokes uv",
     .account = {{&idokep_user, "id\xc3\xb3k\xc3\xa9p", "user"}, {&idokep_password, R"(\\back\slash")", "pass"}},
     .good = "k\xe9sz!\n", .bad = "k\xc3\xa9sz!",  // ISO 8859-2, UTF-8
     .failure = "upload to idokep: k\xc3\xa9sz!", .no_response = "no response from idokep"},
    // clang-format on
};

// A second server is like its network's first, except for what is set here.
std::vector<network_row> with_second_servers() {
  std::vector<network_row> all(std::begin(NETWORKS), std::end(NETWORKS));
  const auto add = [&](std::string_view name) {
    all.push_back(*std::ranges::find(NETWORKS, name, &network_row::name));
    all.back().which = server::second;
  };
  add("weather underground");
  all.back().endpoint = "wunderground_rapid";
  all.back().parameters = "realtime rtfreq action dateutc humidity tempf dewptf softwaretype";
  add("HAMweather/weather4u");
  all.back().origin = replies::known;
  all.back().path = "/api/v1/submitwx";
  all.back().success_text = R"("success":true)";
  all.back().good = R"({"success":true,"error":null})";
  all.back().bad = R"({"error":{"code":"invalid_station"}})";
  add("idokep");
  all.back().endpoint = "idokep_pro";
  all.back().good = "Feltoltes sikeres\n";
  add("meteonews");
  return all;
}

}  // namespace

std::span<const network_row> http_networks() {
  static const std::vector<network_row> all = with_second_servers();
  return all;
}

}  // namespace skypost::sim
