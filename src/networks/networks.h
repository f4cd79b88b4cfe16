#pragma once

#include "compose/upload.h"
#include "endpoints/endpoints.h"
#include "transport/wget.h"

// The weather networks that take an HTTP request.
//
// A network function sends the current values in one request and judges the reply. It returns 0, or -1 with the reason
// in `error_text`. While the live data are stale it sends nothing and returns 0. In rapid fire, Weather Underground and
// WeatherFlow get a different request.
namespace skypost {

// 1 in rapid fire, otherwise 0. Set once, by the command line.
extern std::int32_t rapid_fire_flag;

// The endpoint with a network's server: always the same one, or chosen by the settings.
class server_endpoint {
 public:
  consteval server_endpoint(endpoint fixed) : fixed_(fixed) {}
  consteval server_endpoint(endpoint (*chosen)(const settings_record& settings)) : chosen_(chosen) {}

  endpoint in(const settings_record& settings) const {
    return chosen_ == nullptr ? fixed_ : chosen_(settings);
  }

 private:
  endpoint fixed_{};
  endpoint (*chosen_)(const settings_record& settings) = nullptr;
};

// What a network takes, where and how, and how its reply is judged.
struct http_network : upload {
  server_endpoint server;
  const char* path;            // on the server, unless the endpoint file names another
  composer append_parameters;  // of the query or the form
  upload_spec reply;
};

// Append the whole command. `end` closes a GET: the quote, and where wget's messages go.
void append_get(text_buffer& command, const http_network& network, const station& source, const char* end);
void append_post(text_buffer& command, const http_network& network, const station& source);
int send_request(const http_network& network);

// The network function of a network.
template <const http_network& network>
int upload_to() {
  return send_request(network);
}

// Each of the next three makes the first column of a network's record. A GET request whose reply includes wget's standard
// error:
template <const http_network& network>
consteval upload sent_by_get(const char* id) {
  constexpr composer COMPOSE = [](text_buffer& command, const station& source) {
    append_get(command, network, source, "\" 2>/dev/stdout");
  };
  return {id, carrier::http, COMPOSE, upload_to<network>};
}

// A GET request whose reply is only what the server sends:
template <const http_network& network>
consteval upload sent_by_quiet_get(const char* id, const upload* rapid_variant = nullptr) {
  constexpr composer COMPOSE = [](text_buffer& command, const station& source) {
    append_get(command, network, source, "\"");
  };
  return {id, carrier::http, COMPOSE, upload_to<network>, rapid_variant};
}

// A POST request. Without -q, wget's messages are part of the reply.
template <const http_network& network>
consteval upload sent_by_post(const char* id) {
  return {id, carrier::http,
          [](text_buffer& command, const station& source) { append_post(command, network, source); },
          upload_to<network>};
}

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

// The network functions.
inline constexpr auto* push_awekas = upload_to<AWEKAS_PUSH>;
inline constexpr auto* push_wedaal = upload_to<WEDAAL_PUSH>;
inline constexpr auto* upload_anythingweather = upload_to<ANYTHINGWEATHER>;
inline constexpr auto* upload_idokep = upload_to<IDOKEP>;
inline constexpr auto* upload_meteonews = upload_to<METEONEWS>;
inline constexpr auto* upload_metoffice_wow = upload_to<METOFFICE>;
inline constexpr auto* upload_pwsweather = upload_to<PWSWEATHER>;
inline constexpr auto* upload_regiowetter = upload_to<REGIOWETTER>;
inline constexpr auto* upload_regiowetter_bw = upload_to<REGIOWETTER_BW>;
inline constexpr auto* upload_sauerlandwetter = upload_to<SAUERLANDWETTER>;
inline constexpr auto* upload_shnetz = upload_to<SHNETZ>;
inline constexpr auto* upload_weather_underground = upload_to<WUNDERGROUND>;
inline constexpr auto* upload_weatherbug = upload_to<WEATHERBUG>;
inline constexpr auto* upload_weatherflow = upload_to<WEATHERFLOW>;
inline constexpr auto* upload_wetterarchiv = upload_to<WETTERARCHIV>;
inline constexpr auto* upload_wetterring = upload_to<WETTERRING>;
inline constexpr auto* upload_windfinder = upload_to<WINDFINDER>;
inline constexpr auto* upload_windit = upload_to<WINDIT>;

}  // namespace skypost
