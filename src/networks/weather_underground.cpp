// Weather Underground and the networks that speak its protocol: WeatherFlow, Met Office WOW,
// PWSweather, WeatherBug. A GET request: login, UTC time, then what is known, in °F, mph, inches, inHg, W/m².

#include "networks/weather_underground.h"

#include <cstdint>

#include "base/process_state.h"
#include "base/value.h"
#include "transport/command.h"

namespace skypost {
namespace {

enum network_set : std::uint8_t { WU = 1, WF = 2, WOW = 4, PWS = 8, WB = 16 };

struct parameter {
  const char* key;
  std::int32_t LiveRecord::*value;
  const value_form& form;
  int networks;
};

// In the order in which they are sent.
constexpr parameter PARAMETERS[] = {
    // clang-format off
    {"&winddir=",         &LiveRecord::winddir,           WHOLE,       WU | WF | WOW | PWS | WB},
    {"&windspeedmph=",    &LiveRecord::gust10,            WHOLE_MPH,   WU | WF | WOW           },
    {"&windspeedmph=",    &LiveRecord::wind10,            MPH,                         PWS | WB},
    {"&windgustmph=",     &LiveRecord::last15mmaxgust10,  WHOLE_MPH,   WU | WF | WOW           },
    {"&windgustmph=",     &LiveRecord::gust10,            MPH,                         PWS | WB},
    {"&windspdmph_avg2=", &LiveRecord::wind10,            WHOLE_MPH,   WU | WF                 },
    {"&humidity=",        &LiveRecord::hum,               WHOLE,       WU | WF | WOW | PWS | WB},
    {"&tempf=",           &LiveRecord::temp10,            FAHRENHEIT,  WU | WF | WOW | PWS | WB},
    {"&rainin=",          &LiveRecord::last60mraintotal10, INCHES,     WU | WF | WOW           },
    {"&rainin=",          &LiveRecord::rain,              INCHES,                      PWS | WB},
    {"&dailyrainin=",     &LiveRecord::todayraintotal10,  INCHES,      WU | WF | WOW | PWS | WB},
    {"&monthrainin=",     &LiveRecord::monthraintotal10,  INCHES,                      PWS     },
    {"&yearrainin=",      &LiveRecord::yearraintotal10,   INCHES,                      PWS     },
    {"&baromin=",         &LiveRecord::sealevel10,        INHG,        WU | WF |       PWS | WB},
    {"&baromin=",         &LiveRecord::press10,           INHG,                  WOW           },
    {"&dewptf=",          &LiveRecord::dew10,             FAHRENHEIT,  WU | WF | WOW | PWS | WB},
    {"&UV=",              &LiveRecord::uv10,              TENTHS,      WU | WF |       PWS | WB},
    {"&solarradiation=",  &LiveRecord::solar10,           TENTHS,      WU | WF |             WB},
    {"&solarradiation=",  &LiveRecord::solar10,           WHOLE_UNITS,                 PWS     },
    {"&indoortempf=",     &LiveRecord::indoortemp10,      FAHRENHEIT,  WU | WF                 },
    {"&indoorhumidity=",  &LiveRecord::indoorhum,         WHOLE,       WU | WF                 },
    // clang-format on
};

// "&temp2f=" to "&temp7f="
void append_extra_temperatures(text_buffer& command, const LiveRecord& live) {
  int number = 2;
  for (const std::int32_t temperature : live.extratemp10) {
    fixed_text<15> key;
    key.append("&temp%df=", number++);
    append_known(command, key.c_str(), temperature, FAHRENHEIT);
  }
}

// Everything behind the head.
void append_values(text_buffer& command, const LiveRecord& live, network_set network) {
  for (const parameter& row : PARAMETERS)
    if ((row.networks & network) != 0) append_known(command, row.key, live.*row.value, row.form);
  if ((network & (WU | WF)) != 0) append_extra_temperatures(command, live);
  // The reply is wget's output alone: no error redirection.
  command.append_text("&softwaretype=nimbulog\"");
}

void append_date(text_buffer& command, const std::tm& utc) {
  command.append("%04d-%02d-%02d %02d:%02d:%02d", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
                 utc.tm_hour, utc.tm_min, utc.tm_sec);
}

// The head that three of them share.
void begin_update(text_buffer& command, endpoint server, const char* path, std::string_view id,
                  std::string_view password, const moment& now) {
  begin_get(command, server, path);
  append_parameter(command, "action=updateraw&ID=", id);
  append_parameter(command, "&PASSWORD=", password);
  command.append_text("&dateutc=");
  append_date(command, now.utc);
}

void append_rapid_fire(text_buffer& command, std::int32_t interval) {
  command.append("&realtime=1&rtfreq=%d", interval);
}

void begin_weather_underground(text_buffer& command, endpoint server, const settings_record& settings,
                               const moment& now) {
  begin_update(command, server, "/weatherstation/updateweatherstation.php", settings.text(wunderground_id),
               settings.text(wunderground_password), now);
}

void compose_weather_underground(text_buffer& command, const settings_record& settings,
                                 const LiveRecord& live, const moment& now) {
  begin_weather_underground(command, endpoint::wunderground, settings, now);
  append_values(command, live, WU);
}

void compose_weather_underground_rapid(text_buffer& command, const settings_record& settings,
                                       const LiveRecord& live, const moment& now) {
  begin_weather_underground(command, endpoint::wunderground_rapid, settings, now);
  append_rapid_fire(command, settings.integer(wunderground_rapid_interval));
  append_values(command, live, WU);
}

void begin_weatherflow(text_buffer& command, const settings_record& settings, const moment& now) {
  begin_update(command, endpoint::weatherflow, "/wxengine/rest/collection/weatherstation",
               settings.text(weatherflow_id), settings.text(weatherflow_password), now);
}

void compose_weatherflow(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                         const moment& now) {
  begin_weatherflow(command, settings, now);
  append_values(command, live, WF);
}

void compose_weatherflow_rapid(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                               const moment& now) {
  begin_weatherflow(command, settings, now);
  append_rapid_fire(command, settings.integer(weatherflow_rapid_interval));
  append_values(command, live, WF);
}

void compose_metoffice_wow(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                           const moment& now) {
  begin_get(command, endpoint::metoffice, "/automaticreading");
  append_parameter(command, "siteid=", settings.text(metoffice_site_id));
  append_parameter(command, "&siteAuthenticationKey=", settings.text(metoffice_site_key));
  command.append("&dateutc=%04d-%02d-%02d+%02d%%3A%02d%%3A%02d", now.utc.tm_year + 1900, now.utc.tm_mon + 1,
                 now.utc.tm_mday, now.utc.tm_hour, now.utc.tm_min, now.utc.tm_sec);
  append_values(command, live, WOW);
}

void compose_pwsweather(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                        const moment& now) {
  begin_update(command, endpoint::pwsweather, "/pwsupdate/pwsupdate.php", settings.text(hamweather_id),
               settings.text(hamweather_password), now);
  append_values(command, live, PWS);
}

void compose_weatherbug(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                        const moment& now) {
  begin_get(command, endpoint::weatherbug, "/data/livedata.aspx");
  append_parameter(command, "ID=", settings.text(weatherbug_id));
  append_parameter(command, "&PASSWORD=", settings.text(weatherbug_password));
  append_parameter(command, "&num=", settings.text(weatherbug_num));
  command.append_text("&dateutc=");
  append_date(command, now.utc);
  append_values(command, live, WB);
}

// PWSweather answers with a page; what counts is its body.
int judge_pwsweather(text_buffer& reply, const upload_spec& spec) {
  const std::optional<std::string_view> body = html_body(reply);
  if (!body) return fail_with_reply(spec, reply.view());
  print_reply(*body);
  if (body->find(spec.success_word) != std::string_view::npos) return 0;
  return fail_with_reply(spec, *body);
}

constexpr upload_spec wunderground_reply(const char* debug_header) {
  return {.debug_header = debug_header,
          .mode = reply_mode::breaks_to_blanks,
          .success_word = "success",
          .failure_format = "upload to weather underground failed: %s",
          .no_response_text = "no response from weather underground",
          .judge = judge_reply,
          .pipe_reason_first = true};
}

constexpr upload_spec WEATHERFLOW_REPLY = {.debug_header = "\nWEATHERFLOW\n",
                                           .mode = reply_mode::breaks_to_blanks,
                                           .success_word = "success",
                                           .failure_format = "upload to weatherflow failed: %s",
                                           .no_response_text = "no response from weatherflow",
                                           .judge = judge_reply};

}  // namespace

constinit const http_network WEATHER_UNDERGROUND = {
    compose_weather_underground, wunderground_reply("\nWEATHER UNDERGROUND\nnormal: %s\n")};

constinit const http_network WEATHER_UNDERGROUND_RAPID = {
    compose_weather_underground_rapid, wunderground_reply("\nWEATHER UNDERGROUND\nrapid: %s\n")};

constinit const http_network WEATHERFLOW = {compose_weatherflow, WEATHERFLOW_REPLY};

constinit const http_network WEATHERFLOW_RAPID = {compose_weatherflow_rapid, WEATHERFLOW_REPLY};

constinit const http_network METOFFICE_WOW = {compose_metoffice_wow,
                                              {.debug_header = "\nMETOFFICE\n%s\n",
                                               .mode = reply_mode::breaks_to_blanks,
                                               .success_word = "success",
                                               .failure_format = "upload to metoffice failed: %s",
                                               .no_response_text = "no response from metoffice",
                                               .judge = judge_reply}};

constinit const http_network PWSWEATHER = {compose_pwsweather,
                                           {.debug_header = "\nWEATHERFORYOU\n%s\n",
                                            .success_word = "Data Logged and posted",
                                            .failure_format = "upload to HAMweather: %s",
                                            .no_response_text = "no response from HAMweather",
                                            .judge = judge_pwsweather}};

constinit const http_network WEATHERBUG = {compose_weatherbug,
                                           {.debug_header = "\nWEATHERBUG\n%s\n",
                                            .mode = reply_mode::breaks_to_blanks,
                                            .success_word = "Success",
                                            .failure_format = "upload to weather bug failed: %s",
                                            .no_response_text = "no response from weather bug",
                                            .judge = judge_reply}};

int upload_weather_underground() {
  return upload_to(flags.rapid_fire_flag != 0 ? WEATHER_UNDERGROUND_RAPID : WEATHER_UNDERGROUND);
}

int upload_weatherflow() { return upload_to(flags.rapid_fire_flag != 0 ? WEATHERFLOW_RAPID : WEATHERFLOW); }

int upload_metoffice_wow() { return upload_to(METOFFICE_WOW); }

int upload_pwsweather() { return upload_to(PWSWEATHER); }

int upload_weatherbug() { return upload_to(WEATHERBUG); }

}  // namespace skypost
