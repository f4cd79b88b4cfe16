#pragma once

#include "networks/http_network.h"

namespace skypost {

extern const http_network WEATHER_UNDERGROUND;
extern const http_network WEATHER_UNDERGROUND_RAPID;
extern const http_network WEATHERFLOW;
extern const http_network WEATHERFLOW_RAPID;
extern const http_network METOFFICE_WOW;
extern const http_network PWSWEATHER;
extern const http_network WEATHERBUG;

// Each sends the current values once and returns 0, or -1 with the reason in `error_text`. The first
// two send their rapid-fire form while the rapid-fire flag is set.
int upload_weather_underground();
int upload_weatherflow();
int upload_metoffice_wow();
int upload_pwsweather();
int upload_weatherbug();

}  // namespace skypost
