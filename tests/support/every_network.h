#pragma once

#include "networks/anythingweather.h"
#include "networks/awekas_wedaal.h"
#include "networks/idokep_wetterarchiv.h"
#include "networks/meteonews.h"
#include "networks/regiowetter.h"
#include "networks/sauerlandwetter.h"
#include "networks/shnetz.h"
#include "networks/weather_underground.h"
#include "networks/wetterring.h"
#include "networks/windfinder_windit.h"

// Every HTTP network's record, for tests and fuzz targets that go over all of them.
namespace skypost {

struct named_network {
  const char* name;
  const http_network* network;
};

inline constexpr named_network EVERY_HTTP_NETWORK[] = {
    {"weather_underground", &WEATHER_UNDERGROUND},
    {"weather_underground_rapid", &WEATHER_UNDERGROUND_RAPID},
    {"weatherflow", &WEATHERFLOW},
    {"weatherflow_rapid", &WEATHERFLOW_RAPID},
    {"metoffice_wow", &METOFFICE_WOW},
    {"pwsweather", &PWSWEATHER},
    {"weatherbug", &WEATHERBUG},
    {"awekas", &AWEKAS},
    {"wedaal", &WEDAAL},
    {"windfinder", &WINDFINDER},
    {"windit", &WINDIT},
    {"idokep", &IDOKEP},
    {"wetterarchiv", &WETTERARCHIV},
    {"anythingweather", &ANYTHINGWEATHER},
    {"meteonews", &METEONEWS},
    {"shnetz", &SHNETZ},
    {"regiowetter_bw", &REGIOWETTER_BW},
    {"regiowetter", &REGIOWETTER},
    {"sauerlandwetter", &SAUERLANDWETTER},
    {"wetterring", &WETTERRING},
};

}  // namespace skypost
