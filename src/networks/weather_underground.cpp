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

void append_values(text_buffer& command, const LiveRecord& live, network_set network) {
  for (const family_parameter& row : PARAMETERS)
    if ((row.networks & network) != 0) append_known(command, live, row.sent);
  // In this family wget's error output is not part of the reply.
  command.append("&softwaretype=%s\"", SOFTWARE_NAME);
}

void append_utc(text_buffer& command, const station& source) {
  const std::tm& utc = source.now.utc;
  command.append("&dateutc=%04d-%02d-%02d %02d:%02d:%02d", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
                 utc.tm_hour, utc.tm_min, utc.tm_sec);
}

// The start shared by three networks.
void begin_update(text_buffer& command, endpoint server, const char* path, const text_field& id,
                  const text_field& password, const station& source) {
  begin_get(command, server, path);
  append_parameter(command, "action=updateraw&ID=", source.settings.text(id));
  append_parameter(command, "&PASSWORD=", source.settings.text(password));
  append_utc(command, source);
}

void append_rapid_fire(text_buffer& command, std::int32_t interval) {
  command.append("&realtime=1&rtfreq=%d", interval);
}

void begin_wunderground(text_buffer& command, endpoint server, const station& source) {
  begin_update(command, server, "/weatherstation/updateweatherstation.php", wunderground_id,
               wunderground_password, source);
}

void compose_wunderground(text_buffer& command, const station& source) {
  begin_wunderground(command, endpoint::wunderground, source);
  append_values(command, source.live, WU);
}

void compose_wunderground_rapid(text_buffer& command, const station& source) {
  begin_wunderground(command, endpoint::wunderground_rapid, source);
  append_rapid_fire(command, source.settings.integer(wunderground_rapid_interval));
  append_values(command, source.live, WU);
}

void begin_weatherflow(text_buffer& command, const station& source) {
  begin_update(command, endpoint::weatherflow, "/wxengine/rest/collection/weatherstation", weatherflow_id,
               weatherflow_password, source);
}

void compose_weatherflow(text_buffer& command, const station& source) {
  begin_weatherflow(command, source);
  append_values(command, source.live, WF);
}

void compose_weatherflow_rapid(text_buffer& command, const station& source) {
  begin_weatherflow(command, source);
  append_rapid_fire(command, source.settings.integer(weatherflow_rapid_interval));
  append_values(command, source.live, WF);
}

void compose_metoffice(text_buffer& command, const station& source) {
  const std::tm& utc = source.now.utc;
  begin_get(command, endpoint::metoffice, "/automaticreading");
  append_parameter(command, "siteid=", source.settings.text(metoffice_site_id));
  append_parameter(command, "&siteAuthenticationKey=", source.settings.text(metoffice_site_key));
  command.append("&dateutc=%04d-%02d-%02d+%02d%%3A%02d%%3A%02d", utc.tm_year + 1900, utc.tm_mon + 1,
                 utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec);
  append_values(command, source.live, WOW);
}

void compose_pwsweather(text_buffer& command, const station& source) {
  begin_update(command, endpoint::pwsweather, "/pwsupdate/pwsupdate.php", hamweather_id, hamweather_password,
               source);
  append_values(command, source.live, PWS);
}

void compose_weatherbug(text_buffer& command, const station& source) {
  begin_get(command, endpoint::weatherbug, "/data/livedata.aspx");
  append_parameter(command, "ID=", source.settings.text(weatherbug_id));
  append_parameter(command, "&PASSWORD=", source.settings.text(weatherbug_password));
  append_parameter(command, "&num=", source.settings.text(weatherbug_num));
  append_utc(command, source);
  append_values(command, source.live, WB);
}

// PWSweather replies with a page; only its body is judged.
int judge_pwsweather(text_buffer& reply, const upload_spec& spec) {
  const std::optional<std::string_view> body = html_body(reply);
  if (!body) return fail_with_reply(spec, reply.view());
  print_reply(*body);
  if (body->find("Data Logged and posted") != std::string_view::npos) return 0;
  return fail_with_reply(spec, *body);
}

consteval upload_spec wunderground_reply(endpoint server, const char* debug_header) {
  return {.server = server,
          .debug_header = debug_header,
          .success = {"success", reply_mode::breaks_to_blanks},
          .failure_format = "upload to weather underground failed: %s",
          .no_response_text = "no response from weather underground",
          .pipe_reason_first = true};
}

constexpr upload_spec WEATHERFLOW_REPLY = {.server = endpoint::weatherflow,
                                           .debug_header = "\nWEATHERFLOW\n",
                                           .success = {"success", reply_mode::breaks_to_blanks},
                                           .failure_format = "upload to weatherflow failed: %s",
                                           .no_response_text = "no response from weatherflow"};

}  // namespace

constinit const http_network WUNDERGROUND_RAPID = {
    "wunderground_rapid", compose_wunderground_rapid, upload_weather_underground,
    wunderground_reply(endpoint::wunderground_rapid, "\nWEATHER UNDERGROUND\nrapid: %s\n")};

constinit const http_network WUNDERGROUND = {
    "wunderground", compose_wunderground, upload_weather_underground,
    wunderground_reply(endpoint::wunderground, "\nWEATHER UNDERGROUND\nnormal: %s\n"), &WUNDERGROUND_RAPID};

constinit const http_network WEATHERFLOW_RAPID = {"weatherflow_rapid", compose_weatherflow_rapid,
                                                  upload_weatherflow, WEATHERFLOW_REPLY};

constinit const http_network WEATHERFLOW = {"weatherflow", compose_weatherflow, upload_weatherflow,
                                            WEATHERFLOW_REPLY, &WEATHERFLOW_RAPID};

// The server tells good from bad by its HTTP status alone, and says {} or nothing to a good report.
constinit const http_network METOFFICE = {"metoffice",
                                          compose_metoffice,
                                          upload_metoffice_wow,
                                          {.server = endpoint::metoffice,
                                           .debug_header = "\nMETOFFICE\n%s\n",
                                           .success = {"success", reply_mode::breaks_to_blanks},
                                           .failure_format = "upload to metoffice failed: %s",
                                           .no_response_text = "no response from metoffice",
                                           .status_0_is_success = true}};

constinit const http_network PWSWEATHER = {"pwsweather",
                                           compose_pwsweather,
                                           upload_pwsweather,
                                           {.server = endpoint::pwsweather,
                                            .debug_header = "\nWEATHERFORYOU\n%s\n",
                                            .success = judge_pwsweather,
                                            .failure_format = "upload to HAMweather: %s",
                                            .no_response_text = "no response from HAMweather"}};

constinit const http_network WEATHERBUG = {"weatherbug",
                                           compose_weatherbug,
                                           upload_weatherbug,
                                           {.server = endpoint::weatherbug,
                                            .debug_header = "\nWEATHERBUG\n%s\n",
                                            .success = {"Success", reply_mode::breaks_to_blanks},
                                            .failure_format = "upload to weather bug failed: %s",
                                            .no_response_text = "no response from weather bug"}};

int upload_weather_underground() {
  return upload_to(rapid_fire_flag != 0 ? WUNDERGROUND_RAPID : WUNDERGROUND);
}

int upload_weatherflow() { return upload_to(rapid_fire_flag != 0 ? WEATHERFLOW_RAPID : WEATHERFLOW); }

int upload_metoffice_wow() { return upload_to(METOFFICE); }

int upload_pwsweather() { return upload_to(PWSWEATHER); }

int upload_weatherbug() { return upload_to(WEATHERBUG); }

}  // namespace skypost
