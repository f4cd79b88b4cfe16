// Wetterring: a GET request with a secret for login, the seconds since the epoch, and what is known of now,
// the day, the month and the year: °C, km/h, hPa, mm, W/m². Some of the day's extremes bring their time along.

#include "networks/wetterring.h"

#include <cstdint>

#include "base/value.h"
#include "transport/command.h"

namespace skypost {
namespace {

struct parameter {
  const char* key;
  std::int32_t LiveRecord::*value;
  const value_form& form;
  const char* time_key = nullptr;
  std::int32_t LiveRecord::*time = nullptr;  // seconds since the epoch
};

// In the order in which they are sent.
constexpr parameter PARAMETERS[] = {
    // clang-format off
    {"&temp_c=",         &LiveRecord::temp10,             TENTHS},
    {"&temp_d_min=",     &LiveRecord::todaymintemp10,     TENTHS, "&temp_d_min_t=", &LiveRecord::todaymintemptime},
    {"&temp_d_max=",     &LiveRecord::todaymaxtemp10,     TENTHS, "&temp_d_max_t=", &LiveRecord::todaymaxtemptime},
    {"&temp_m_min=",     &LiveRecord::monthmintemp10,     TENTHS},
    {"&temp_m_max=",     &LiveRecord::monthmaxtemp10,     TENTHS},
    {"&temp_y_min=",     &LiveRecord::yearmintemp10,      TENTHS},
    {"&temp_y_max=",     &LiveRecord::yearmaxtemp10,      TENTHS},
    {"&dewpoint_c=",     &LiveRecord::dew10,              TENTHS},
    {"&baro_c=",         &LiveRecord::sealevel10,         TENTHS},
    {"&baro_d_min=",     &LiveRecord::todayminsealevel10, TENTHS, "&baro_d_min_t=", &LiveRecord::todayminsealeveltime},
    {"&baro_d_max=",     &LiveRecord::todaymaxsealevel10, TENTHS, "&baro_d_max_t=", &LiveRecord::todaymaxsealeveltime},
    {"&hum_c=",          &LiveRecord::hum,                WHOLE},
    {"&hum_d_min=",      &LiveRecord::todayminhum,        WHOLE,  "&hum_d_min_t=",  &LiveRecord::todayminhumtime},
    {"&hum_d_max=",      &LiveRecord::todaymaxhum,        WHOLE,  "&hum_d_max_t=",  &LiveRecord::todaymaxhumtime},
    {"&rain_c=",         &LiveRecord::last60mraintotal10, TENTHS},
    {"&rain_d=",         &LiveRecord::todayraintotal10,   TENTHS},
    {"&rain_m=",         &LiveRecord::monthraintotal10,   TENTHS},
    {"&rain_y=",         &LiveRecord::yearraintotal10,    TENTHS},
    {"&wind_speed_c=",   &LiveRecord::gust10,             KMH},
    {"&wind_speed_d=",   &LiveRecord::todaymaxgust10,     KMH},
    {"&wind_speed_avg=", &LiveRecord::wind10,             KMH},
    // clang-format on
};

void append_row(text_buffer& command, const parameter& row, const LiveRecord& live) {
  append_known(command, row.key, live.*row.value, row.form);
  if (row.time != nullptr && known(live.*row.value)) command.append("%s%d", row.time_key, live.*row.time);
}

// The direction as a compass word, sent whenever its degrees are known.
void append_direction(text_buffer& command, const LiveRecord& live) {
  if (!known(live.winddir)) return;
  append_parameter(command, "&wind_dir=", live.winddirstr);
}

void compose_wetterring(text_buffer& command, const settings_record& settings, const LiveRecord& live,
                        const moment& now) {
  begin_get(command, endpoint::wetterring, "/weatherboxx/");
  append_parameter(command, "secret=", settings.text(wetterring_secret));
  command.append("&tm=%lld", static_cast<long long>(now.seconds));
  for (const parameter& row : PARAMETERS) append_row(command, row, live);
  append_direction(command, live);
  append_known(command, "&sun_watt_c=", live.solar10, WHOLE_UNITS);
  end_get(command);
}

}  // namespace

constinit const http_network WETTERRING = {compose_wetterring,
                                           {.debug_header = "\nWETTERRING\n%s\n",
                                            .success_word = "successfully",
                                            .failure_format = "upload to wetterring failed: %s",
                                            .no_response_text = "no response from wetterring",
                                            .judge = judge_reply}};

int upload_wetterring() { return upload_to(WETTERRING); }

}  // namespace skypost
