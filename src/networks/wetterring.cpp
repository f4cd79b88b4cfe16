// Wetterring: a GET request with a secret as login, the seconds since the epoch, then the known values for
// now, today, this month and this year: °C, km/h, hPa, mm, W/m². Some of today's extremes come with their
// time.

#include "compose/command.h"
#include "compose/parameters.h"
#include "networks/networks.h"

namespace skypost {
namespace {

// In the order in which they are sent. A missing time of an extreme is sent as 0.
constexpr parameter PARAMETERS[] = {
    // clang-format off
    {"&temp_c=",          &LiveRecord::temp10,               TENTHS},
    {"&temp_d_min=",      &LiveRecord::todaymintemp10,       TENTHS},
    {"&temp_d_min_t=",    &LiveRecord::todaymintemptime,     WHOLE,  "", &LiveRecord::todaymintemp10},
    {"&temp_d_max=",      &LiveRecord::todaymaxtemp10,       TENTHS},
    {"&temp_d_max_t=",    &LiveRecord::todaymaxtemptime,     WHOLE,  "", &LiveRecord::todaymaxtemp10},
    {"&temp_m_min=",      &LiveRecord::monthmintemp10,       TENTHS},
    {"&temp_m_max=",      &LiveRecord::monthmaxtemp10,       TENTHS},
    {"&temp_y_min=",      &LiveRecord::yearmintemp10,        TENTHS},
    {"&temp_y_max=",      &LiveRecord::yearmaxtemp10,        TENTHS},
    {"&dewpoint_c=",      &LiveRecord::dew10,                TENTHS},
    {"&baro_c=",          &LiveRecord::sealevel10,           TENTHS},
    {"&baro_d_min=",      &LiveRecord::todayminsealevel10,   TENTHS},
    {"&baro_d_min_t=",    &LiveRecord::todayminsealeveltime, WHOLE,  "", &LiveRecord::todayminsealevel10},
    {"&baro_d_max=",      &LiveRecord::todaymaxsealevel10,   TENTHS},
    {"&baro_d_max_t=",    &LiveRecord::todaymaxsealeveltime, WHOLE,  "", &LiveRecord::todaymaxsealevel10},
    {"&hum_c=",           &LiveRecord::hum,                  WHOLE},
    {"&hum_d_min=",       &LiveRecord::todayminhum,          WHOLE},
    {"&hum_d_min_t=",     &LiveRecord::todayminhumtime,      WHOLE,  "", &LiveRecord::todayminhum},
    {"&hum_d_max=",       &LiveRecord::todaymaxhum,          WHOLE},
    {"&hum_d_max_t=",     &LiveRecord::todaymaxhumtime,      WHOLE,  "", &LiveRecord::todaymaxhum},
    {"&rain_c=",          &LiveRecord::last60mraintotal10,   TENTHS},
    {"&rain_d=",          &LiveRecord::todayraintotal10,     TENTHS},
    {"&rain_m=",          &LiveRecord::monthraintotal10,     TENTHS},
    {"&rain_y=",          &LiveRecord::yearraintotal10,      TENTHS},
    {"&wind_speed_c=",    &LiveRecord::gust10,               KMH},
    {"&wind_speed_d=",    &LiveRecord::todaymaxgust10,       KMH},
    {"&wind_speed_avg=",  &LiveRecord::wind10,               KMH},
    // clang-format on
};

// The compass word is sent if the degrees are known.
void append_direction(text_buffer& query, const LiveRecord& live) {
  if (!known(live.winddir)) return;
  append_parameter(query, "&wind_dir=", live.winddirstr);
}

void append_query(text_buffer& query, const station& source) {
  append_parameter(query, "secret=", source.settings.text(wetterring_secret));
  query.append("&tm=%lld", static_cast<long long>(source.now.seconds));
  append_known(query, source.live, PARAMETERS);
  append_direction(query, source.live);
  append_known(query, source.live, {"&sun_watt_c=", &LiveRecord::solar10, WHOLE_UNITS});
}

}  // namespace

constinit const http_network WETTERRING = {sent_by_get<WETTERRING>("wetterring"),
                                           endpoint::wetterring,
                                           "/weatherboxx/",
                                           append_query,
                                           {.debug_header = "\nWETTERRING\n%s\n",
                                            .success = "successfully",
                                            .failure_format = "upload to wetterring failed: %s",
                                            .no_response_text = "no response from wetterring"}};

}  // namespace skypost
