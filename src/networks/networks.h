#pragma once

#include "compose/outgoing.h"
#include "transport/upload.h"

// The weather networks that take an HTTP request.
//
// A network function sends the current values in one request and judges the reply. It returns 0, or -1 with
// the reason in `error_text`. While the live data are stale it sends nothing and returns 0. Weather
// Underground and WeatherFlow use a different request in rapid fire.
namespace skypost {

// 1 in rapid fire, otherwise 0. Set once, by the command line.
extern std::int32_t rapid_fire_flag;

// A network: its request and how its reply is judged.
struct http_network : outgoing {
  consteval http_network(const char* called, composer composed_by, int (*sent_by)(),
                         const upload_spec& judged_by, const outgoing* in_rapid_fire = nullptr)
      : outgoing{called, carrier::http, composed_by, sent_by, in_rapid_fire}, reply(judged_by) {}

  upload_spec reply;
};

extern const http_network ANYTHINGWEATHER;
extern const http_network AWEKAS_PUSH;
extern const http_network IDOKEP;
extern const http_network METEONEWS;
extern const http_network METOFFICE;
extern const http_network PWSWEATHER;
extern const http_network REGIOWETTER;
extern const http_network REGIOWETTER_BW;
extern const http_network SAUERLANDWETTER;
extern const http_network SHNETZ;
extern const http_network WEATHERBUG;
extern const http_network WEATHERFLOW;
extern const http_network WEATHERFLOW_RAPID;
extern const http_network WEDAAL_PUSH;
extern const http_network WETTERARCHIV;
extern const http_network WETTERRING;
extern const http_network WINDFINDER;
extern const http_network WINDIT;
extern const http_network WUNDERGROUND;
extern const http_network WUNDERGROUND_RAPID;

int push_awekas();
int push_wedaal();
int upload_anythingweather();
int upload_idokep();
int upload_meteonews();
int upload_metoffice_wow();
int upload_pwsweather();
int upload_regiowetter();
int upload_regiowetter_bw();
int upload_sauerlandwetter();
int upload_shnetz();
int upload_weather_underground();
int upload_weatherbug();
int upload_weatherflow();
int upload_wetterarchiv();
int upload_wetterring();
int upload_windfinder();
int upload_windit();

// Idokep as the settings have it: IDOKEP, or the pro service, which differs only in its server.
const http_network& idokep_service(const settings_record& settings);

// The body of every network function.
int upload_to(const http_network& network);

}  // namespace skypost
