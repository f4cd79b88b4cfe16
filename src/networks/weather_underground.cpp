// Weather Underground and the networks with the same protocol: WeatherFlow, Met Office WOW, PWSweather,
// WeatherBug. A GET request: login, UTC time, then the known values, in °F, mph, inches, inHg, W/m².

#include <cstdint>

#include "compose/command.h"
#include "compose/parameters.h"
#include "compose/software.h"
#include "networks/networks.h"

namespace skypost {
namespace {

enum network_set : std::uint8_t { WU = 1, WF = 2, WOW = 4, PWS = 8, WB = 16 };

struct family_parameter {
  int networks;
  parameter sent;
};

consteval live_number extra(int index) { return live_number::extra_temperature(index); }

// In the order in which they are sent.
constexpr family_parameter PARAMETERS[] = {
    // clang-format off
    {WU | WF | WOW | PWS | WB, {"&winddir=",         &LiveRecord::winddir,            WHOLE}},
    {WU | WF | WOW           , {"&windspeedmph=",    &LiveRecord::gust10,             WHOLE_MPH}},
    {                PWS | WB, {"&windspeedmph=",    &LiveRecord::wind10,             MPH}},
    {WU | WF | WOW           , {"&windgustmph=",     &LiveRecord::last15mmaxgust10,   WHOLE_MPH}},
    {                PWS | WB, {"&windgustmph=",     &LiveRecord::gust10,             MPH}},
    {WU | WF                 , {"&windspdmph_avg2=", &LiveRecord::wind10,             WHOLE_MPH}},
    {WU | WF | WOW | PWS | WB, {"&humidity=",        &LiveRecord::hum,                WHOLE}},
    {WU | WF | WOW | PWS | WB, {"&tempf=",           &LiveRecord::temp10,             FAHRENHEIT}},
    {WU | WF | WOW           , {"&rainin=",          &LiveRecord::last60mraintotal10, INCHES}},
    {                PWS | WB, {"&rainin=",          &LiveRecord::rain,               INCHES}},
    {WU | WF | WOW | PWS | WB, {"&dailyrainin=",     &LiveRecord::todayraintotal10,   INCHES}},
    {                PWS     , {"&monthrainin=",     &LiveRecord::monthraintotal10,   INCHES}},
    {                PWS     , {"&yearrainin=",      &LiveRecord::yearraintotal10,    INCHES}},
    {WU | WF |       PWS | WB, {"&baromin=",         &LiveRecord::sealevel10,         INHG}},
    {          WOW           , {"&baromin=",         &LiveRecord::press10,            INHG}},
    {WU | WF | WOW | PWS | WB, {"&dewptf=",          &LiveRecord::dew10,              FAHRENHEIT}},
    {WU | WF |       PWS | WB, {"&UV=",              &LiveRecord::uv10,               TENTHS}},
    {WU | WF |             WB, {"&solarradiation=",  &LiveRecord::solar10,            TENTHS}},
    {                PWS     , {"&solarradiation=",  &LiveRecord::solar10,            WHOLE_UNITS}},
    {WU | WF                 , {"&indoortempf=",     &LiveRecord::indoortemp10,       FAHRENHEIT}},
    {WU | WF                 , {"&indoorhumidity=",  &LiveRecord::indoorhum,          WHOLE}},
    {WU | WF                 , {"&temp2f=",          extra(0),                        FAHRENHEIT}},
    {WU | WF                 , {"&temp3f=",          extra(1),                        FAHRENHEIT}},
    {WU | WF                 , {"&temp4f=",          extra(2),                        FAHRENHEIT}},
    {WU | WF                 , {"&temp5f=",          extra(3),                        FAHRENHEIT}},
    {WU | WF                 , {"&temp6f=",          extra(4),                        FAHRENHEIT}},
    {WU | WF                 , {"&temp7f=",          extra(5),                        FAHRENHEIT}},
    // clang-format on
};

void append_values(text_buffer& query, const LiveRecord& live, network_set network) {
  for (const family_parameter& row : PARAMETERS)
    if ((row.networks & network) != 0) append_known(query, live, row.sent);
  query.append("&softwaretype=%s", SOFTWARE_NAME);
}

void append_utc(text_buffer& query, const station& source) {
  const std::tm& utc = source.now.utc;
  query.append("&dateutc=%04d-%02d-%02d %02d:%02d:%02d", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
               utc.tm_hour, utc.tm_min, utc.tm_sec);
}

// The query as three of the networks take it. In rapid fire, the interval in seconds is sent too.
template <network_set network, const text_field& id, const text_field& password,
          const integer_field* interval = nullptr>
void append_update(text_buffer& query, const station& source) {
  append_parameter(query, "action=updateraw&ID=", source.settings.text(id));
  append_parameter(query, "&PASSWORD=", source.settings.text(password));
  append_utc(query, source);
  if (interval != nullptr) query.append("&realtime=1&rtfreq=%d", source.settings.integer(*interval));
  append_values(query, source.live, network);
}

void append_metoffice(text_buffer& query, const station& source) {
  const std::tm& utc = source.now.utc;
  append_parameter(query, "siteid=", source.settings.text(metoffice_site_id));
  append_parameter(query, "&siteAuthenticationKey=", source.settings.text(metoffice_site_key));
  query.append("&dateutc=%04d-%02d-%02d+%02d%%3A%02d%%3A%02d", utc.tm_year + 1900, utc.tm_mon + 1,
               utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec);
  append_values(query, source.live, WOW);
}

void append_weatherbug(text_buffer& query, const station& source) {
  append_parameter(query, "ID=", source.settings.text(weatherbug_id));
  append_parameter(query, "&PASSWORD=", source.settings.text(weatherbug_password));
  append_parameter(query, "&num=", source.settings.text(weatherbug_num));
  append_utc(query, source);
  append_values(query, source.live, WB);
}

// PWSweather replies with a page; only its body is judged.
int judge_pwsweather(text_buffer& reply, const upload_spec& spec) {
  const std::optional<std::string_view> body = html_body(reply);
  if (!body) return fail_with_reply(spec, reply.view());
  print_reply(*body);
  if (body->find("Data Logged and posted") != std::string_view::npos) return 0;
  return fail_with_reply(spec, *body);
}

consteval upload_spec wunderground_reply(const char* debug_header) {
  return {.debug_header = debug_header,
          .success = {"success", reply_mode::breaks_to_blanks},
          .failure_format = "upload to weather underground failed: %s",
          .no_response_text = "no response from weather underground",
          .pipe_failure_format = "error open pipe (%2$s): %1$s"};
}

constexpr char WUNDERGROUND_PATH[] = "/weatherstation/updateweatherstation.php";

constexpr upload_spec WEATHERFLOW_REPLY = {.debug_header = "\nWEATHERFLOW\n",
                                           .success = {"success", reply_mode::breaks_to_blanks},
                                           .failure_format = "upload to weatherflow failed: %s",
                                           .no_response_text = "no response from weatherflow"};
constexpr char WEATHERFLOW_PATH[] = "/wxengine/rest/collection/weatherstation";

}  // namespace

// The replies of this family do not include wget's messages.

constinit const http_network WUNDERGROUND = {
    sent_by_quiet_get<WUNDERGROUND>("wunderground", &WUNDERGROUND_RAPID), endpoint::wunderground,
    WUNDERGROUND_PATH, append_update<WU, wunderground_id, wunderground_password>,
    wunderground_reply("\nWEATHER UNDERGROUND\nnormal: %s\n")};

constinit const http_network WUNDERGROUND_RAPID = {
    sent_by_quiet_get<WUNDERGROUND_RAPID>("wunderground_rapid"), endpoint::wunderground_rapid,
    WUNDERGROUND_PATH,
    append_update<WU, wunderground_id, wunderground_password, &wunderground_rapid_interval>,
    wunderground_reply("\nWEATHER UNDERGROUND\nrapid: %s\n")};

constinit const http_network WEATHERFLOW = {
    sent_by_quiet_get<WEATHERFLOW>("weatherflow", &WEATHERFLOW_RAPID), endpoint::weatherflow,
    WEATHERFLOW_PATH, append_update<WF, weatherflow_id, weatherflow_password>, WEATHERFLOW_REPLY};

constinit const http_network WEATHERFLOW_RAPID = {
    sent_by_quiet_get<WEATHERFLOW_RAPID>("weatherflow_rapid"), endpoint::weatherflow, WEATHERFLOW_PATH,
    append_update<WF, weatherflow_id, weatherflow_password, &weatherflow_rapid_interval>, WEATHERFLOW_REPLY};

// The server signals success only through its HTTP status; the body of a good reply is {} or empty.
constinit const http_network METOFFICE = {sent_by_quiet_get<METOFFICE>("metoffice"),
                                          endpoint::metoffice,
                                          "/automaticreading",
                                          append_metoffice,
                                          {.debug_header = "\nMETOFFICE\n%s\n",
                                           .success = {"success", reply_mode::breaks_to_blanks},
                                           .failure_format = "upload to metoffice failed: %s",
                                           .no_response_text = "no response from metoffice",
                                           .status_0_is_success = true}};

constinit const http_network PWSWEATHER = {sent_by_quiet_get<PWSWEATHER>("pwsweather"),
                                           endpoint::pwsweather,
                                           "/pwsupdate/pwsupdate.php",
                                           append_update<PWS, hamweather_id, hamweather_password>,
                                           {.debug_header = "\nWEATHERFORYOU\n%s\n",
                                            .success = judge_pwsweather,
                                            .failure_format = "upload to HAMweather: %s",
                                            .no_response_text = "no response from HAMweather"}};

constinit const http_network WEATHERBUG = {sent_by_quiet_get<WEATHERBUG>("weatherbug"),
                                           endpoint::weatherbug,
                                           "/data/livedata.aspx",
                                           append_weatherbug,
                                           {.debug_header = "\nWEATHERBUG\n%s\n",
                                            .success = {"Success", reply_mode::breaks_to_blanks},
                                            .failure_format = "upload to weather bug failed: %s",
                                            .no_response_text = "no response from weather bug"}};

}  // namespace skypost
