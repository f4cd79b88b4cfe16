#pragma once

#include <cstdint>
#include <iterator>

#include "live/live_record.h"
#include "live/number_reader.h"
#include "settings/fields.h"

namespace skypost {

// The kind of value after a key.
enum class value_kind : std::uint8_t {
  number,
  word,  // up to the next blank
  time,  // 14 digits, YYYYMMDDhhmmss, local time
};

// The sensor of a key that has none.
inline constexpr text_field NO_SENSOR{};

// One key of the report, and the member of the live record that its value fills. A time may fill two.
struct live_row {
  const char* key;    // "%s" is replaced by the sensor's identifier
  text_field sensor;  // the setting that selects the sensor, or NO_SENSOR
  value_kind kind;
  number_scan scan;    // for numbers
  live_number number;  // for numbers; for times, filled with the seconds since the epoch, if any
  std::int32_t missing_number;
  live_text LiveRecord::*text;  // for words; for times, the time of day
  const char* missing_text;

  constexpr bool has_sensor() const { return sensor.size != 0; }
};

consteval live_row number_of(const char* key, text_field sensor, live_number number, number_scan scan,
                             std::int32_t missing = MISSING_VALUE) {
  return {key, sensor, value_kind::number, scan, number, missing, nullptr, nullptr};
}

consteval live_row word_of(const char* key, text_field sensor, live_text LiveRecord::*word,
                           const char* missing) {
  return {key, sensor, value_kind::word, {}, {}, 0, word, missing};
}

consteval live_row time_of(const char* key, text_field sensor, live_text LiveRecord::*time_of_day,
                           live_number seconds = {}) {
  return {key, sensor, value_kind::time, {}, seconds, 0, time_of_day, "---"};
}

// The rows, in the order in which their keys are looked up. A key that ends in a blank matches only as a whole, not as
// the start of a longer one.
inline constexpr live_row LIVE_TABLE[] = {
    // clang-format off
    number_of("actual_%s_temp_c",            sensor_temp,   &LiveRecord::temp10,                  number_scan::tenths),
    number_of("actual_%s_hum_rel",           sensor_hum,    &LiveRecord::hum,                     number_scan::integer),
    number_of("actual_%s_dew_c",             sensor_dew,    &LiveRecord::dew10,                   number_scan::tenths),
    number_of("actual_%s_press_hpa",         sensor_press,  &LiveRecord::press10,                 number_scan::tenths),
    number_of("actual_%s_height_m",          sensor_press,  &LiveRecord::height,                  number_scan::rounded, 0),
    number_of("actual_%s_altimeter_hpa",     sensor_press,  &LiveRecord::altimeter10,             number_scan::tenths),
    number_of("actual_%s_sealevel_hpa",      sensor_press,  &LiveRecord::sealevel10,              number_scan::tenths),
    number_of("actual_%s_dir_deg",           sensor_wind,   &LiveRecord::winddir,                 number_scan::integer),
    word_of("actual_%s_dir_de ",             sensor_wind,   &LiveRecord::winddirstr,              ""),
    word_of("actual_%s_dir_en ",             sensor_wind,   &LiveRecord::winddirstren,            ""),
    number_of("actual_%s_speed_ms",          sensor_wind,   &LiveRecord::wind10,                  number_scan::tenths),
    number_of("actual_%s_gustspeed_ms",      sensor_wind,   &LiveRecord::gust10,                  number_scan::tenths),
    number_of("actual_%s_chill_c",           sensor_wind,   &LiveRecord::chill10,                 number_scan::tenths),
    number_of("actual_%s_rate_mm",           sensor_rain,   &LiveRecord::rain,                    number_scan::tenths),
    number_of("actual_%s_index ",            sensor_uv,     &LiveRecord::uv10,                    number_scan::tenths),
    number_of("actual_%s_radiation_wqm",     sensor_solar,  &LiveRecord::solar10,                 number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_indoor, &LiveRecord::indoortemp10,            number_scan::tenths),
    number_of("actual_%s_hum_rel",           sensor_indoor, &LiveRecord::indoorhum,               number_scan::integer),
    number_of("last15m_%s_total_mm",         sensor_rain,   &LiveRecord::last15mraintotal10,      number_scan::tenths),
    number_of("last15m_%s_temp_c",           sensor_temp,   &LiveRecord::last15mtemp10,           number_scan::tenths),
    number_of("last15m_%s_sealevel_hpa",     sensor_press,  &LiveRecord::last15msealevel10,       number_scan::tenths),
    number_of("last15m_%s_gustspeedmax_ms",  sensor_wind,   &LiveRecord::last15mmaxgust10,        number_scan::tenths),
    number_of("last15m_%s_speed_ms",         sensor_wind,   &LiveRecord::last15mwind10,           number_scan::tenths),
    number_of("last15m_%s_maindir_deg",      sensor_wind,   &LiveRecord::last15mwinddir,          number_scan::integer),
    number_of("last60m_%s_total_mm",         sensor_rain,   &LiveRecord::last60mraintotal10,      number_scan::tenths),
    number_of("last24h_%s_total_mm",         sensor_rain,   &LiveRecord::last24hraintotal10,      number_scan::tenths),
    number_of("last60m_%s_radiationmax_wqm", sensor_solar,  &LiveRecord::last60mmaxsolar10,       number_scan::integer_tenths),
    number_of("last60m_%s_gustspeedmax_ms",  sensor_wind,   &LiveRecord::last60mmaxgust10,        number_scan::tenths),
    number_of("last60m_%s_press_trend",      sensor_press,  &LiveRecord::last60mpresstrend,       number_scan::integer),
    number_of("day1_%s_temp_c",              sensor_temp,   &LiveRecord::todaytemp10,             number_scan::tenths),
    number_of("day1_%s_tempmax_c",           sensor_temp,   &LiveRecord::todaymaxtemp10,          number_scan::tenths),
    time_of("day1_%s_tempmax_time",          sensor_temp,   &LiveRecord::todaymaxtemptimestr,     &LiveRecord::todaymaxtemptime),
    number_of("day1_%s_tempmin_c",           sensor_temp,   &LiveRecord::todaymintemp10,          number_scan::tenths),
    time_of("day1_%s_tempmin_time",          sensor_temp,   &LiveRecord::todaymintemptimestr,     &LiveRecord::todaymintemptime),
    number_of("day1_%s_dewmax_c",            sensor_dew,    &LiveRecord::todaymaxdew10,           number_scan::tenths),
    time_of("day1_%s_dewmax_time",           sensor_dew,    &LiveRecord::todaymaxdewtimestr),
    number_of("day1_%s_dewmin_c",            sensor_dew,    &LiveRecord::todaymindew10,           number_scan::tenths),
    time_of("day1_%s_dewmin_time",           sensor_dew,    &LiveRecord::todaymindewtimestr),
    number_of("day1_%s_chillmin_c",          sensor_wind,   &LiveRecord::todayminchill10,         number_scan::tenths),
    time_of("day1_%s_chillmin_time",         sensor_wind,   &LiveRecord::todayminchilltimestr),
    number_of("day1_%s_hum_rel",             sensor_hum,    &LiveRecord::todayhum,                number_scan::integer),
    number_of("day1_%s_hummax_rel",          sensor_hum,    &LiveRecord::todaymaxhum,             number_scan::integer),
    time_of("day1_%s_hummax_time",           sensor_hum,    &LiveRecord::todaymaxhumtimestr,      &LiveRecord::todaymaxhumtime),
    number_of("day1_%s_hummin_rel",          sensor_hum,    &LiveRecord::todayminhum,             number_scan::integer),
    time_of("day1_%s_hummin_time",           sensor_hum,    &LiveRecord::todayminhumtimestr,      &LiveRecord::todayminhumtime),
    number_of("day1_%s_indexmax ",           sensor_uv,     &LiveRecord::todaymaxuv10,            number_scan::tenths),
    time_of("day1_%s_indexmax_time",         sensor_uv,     &LiveRecord::todaymaxuvtimestr),
    number_of("day1_%s_radiationmax_wqm",    sensor_solar,  &LiveRecord::todaymaxsolar10,         number_scan::integer_tenths),
    time_of("day1_%s_radiationmax_time",     sensor_solar,  &LiveRecord::todaymaxsolartimestr),
    number_of("day1_%s_sealevelmax_hpa",     sensor_press,  &LiveRecord::todaymaxsealevel10,      number_scan::tenths),
    time_of("day1_%s_sealevelmax_time",      sensor_press,  &LiveRecord::todaymaxsealeveltimestr, &LiveRecord::todaymaxsealeveltime),
    number_of("day1_%s_sealevelmin_hpa",     sensor_press,  &LiveRecord::todayminsealevel10,      number_scan::tenths),
    time_of("day1_%s_sealevelmin_time",      sensor_press,  &LiveRecord::todayminsealeveltimestr, &LiveRecord::todayminsealeveltime),
    number_of("day1_%s_gustspeedmax_ms",     sensor_wind,   &LiveRecord::todaymaxgust10,          number_scan::tenths),
    time_of("day1_%s_gustspeedmax_time",     sensor_wind,   &LiveRecord::todaymaxgusttimestr),
    number_of("day1_%s_speedmax_ms",         sensor_wind,   &LiveRecord::todaymaxwind10,          number_scan::tenths),
    time_of("day1_%s_speedmax_time",         sensor_wind,   &LiveRecord::todaymaxwindtimestr),
    number_of("day1_%s_ratemax_mm",          sensor_rain,   &LiveRecord::todaymaxrainrate10,      number_scan::tenths),
    time_of("day1_%s_ratemax_time",          sensor_rain,   &LiveRecord::todaymaxrainratetimestr),
    number_of("day1_%s_total_mm",            sensor_rain,   &LiveRecord::todayraintotal10,        number_scan::tenths),
    number_of("month1_%s_tempmax_c",         sensor_temp,   &LiveRecord::monthmaxtemp10,          number_scan::tenths),
    number_of("month1_%s_tempmin_c",         sensor_temp,   &LiveRecord::monthmintemp10,          number_scan::tenths),
    number_of("month1_%s_dewmax_c",          sensor_dew,    &LiveRecord::monthmaxdew10,           number_scan::tenths),
    number_of("month1_%s_dewmin_c",          sensor_dew,    &LiveRecord::monthmindew10,           number_scan::tenths),
    number_of("month1_%s_chillmin_c",        sensor_wind,   &LiveRecord::monthminchill10,         number_scan::tenths),
    number_of("month1_%s_hummax_rel",        sensor_hum,    &LiveRecord::monthmaxhum,             number_scan::integer),
    number_of("month1_%s_hummin_rel",        sensor_hum,    &LiveRecord::monthminhum,             number_scan::integer),
    number_of("month1_%s_indexmax ",         sensor_uv,     &LiveRecord::monthmaxuv10,            number_scan::tenths),
    number_of("month1_%s_radiationmax_wqm",  sensor_solar,  &LiveRecord::monthmaxsolar10,         number_scan::integer_tenths),
    number_of("month1_%s_sealevelmax_hpa",   sensor_press,  &LiveRecord::monthmaxsealevel10,      number_scan::tenths),
    number_of("month1_%s_sealevelmin_hpa",   sensor_press,  &LiveRecord::monthminsealevel10,      number_scan::tenths),
    number_of("month1_%s_gustspeedmax_ms",   sensor_wind,   &LiveRecord::monthmaxgust10,          number_scan::tenths),
    number_of("month1_%s_ratemax_mm",        sensor_rain,   &LiveRecord::monthmaxrainrate10,      number_scan::tenths),
    number_of("month1_%s_total_mm",          sensor_rain,   &LiveRecord::monthraintotal10,        number_scan::tenths),
    number_of("year1_%s_tempmax_c",          sensor_temp,   &LiveRecord::yearmaxtemp10,           number_scan::tenths),
    number_of("year1_%s_tempmin_c",          sensor_temp,   &LiveRecord::yearmintemp10,           number_scan::tenths),
    number_of("year1_%s_dewmax_c",           sensor_dew,    &LiveRecord::yearmaxdew10,            number_scan::tenths),
    number_of("year1_%s_dewmin_c",           sensor_dew,    &LiveRecord::yearmindew10,            number_scan::tenths),
    number_of("year1_%s_chillmin_c",         sensor_wind,   &LiveRecord::yearminchill10,          number_scan::tenths),
    number_of("year1_%s_hummax_rel",         sensor_hum,    &LiveRecord::yearmaxhum,              number_scan::integer),
    number_of("year1_%s_hummin_rel",         sensor_hum,    &LiveRecord::yearminhum,              number_scan::integer),
    number_of("year1_%s_indexmax ",          sensor_uv,     &LiveRecord::yearmaxuv10,             number_scan::tenths),
    number_of("year1_%s_radiationmax_wqm",   sensor_solar,  &LiveRecord::yearmaxsolar10,          number_scan::integer_tenths),
    number_of("year1_%s_sealevelmax_hpa",    sensor_press,  &LiveRecord::yearmaxsealevel10,       number_scan::tenths),
    number_of("year1_%s_sealevelmin_hpa",    sensor_press,  &LiveRecord::yearminsealevel10,       number_scan::tenths),
    number_of("year1_%s_gustspeedmax_ms",    sensor_wind,   &LiveRecord::yearmaxgust10,           number_scan::tenths),
    number_of("year1_%s_ratemax_mm",         sensor_rain,   &LiveRecord::yearmaxrainrate10,       number_scan::tenths),
    number_of("year1_%s_total_mm",           sensor_rain,   &LiveRecord::yearraintotal10,         number_scan::tenths),
    word_of("actual_sunrise_standard_local", NO_SENSOR,     &LiveRecord::sunrise,                 "---"),
    word_of("actual_sunset_standard_local",  NO_SENSOR,     &LiveRecord::sunset,                  "---"),
    number_of("actual_%s_temp_c",            sensor_extra_temp[0], live_number::extra_temperature(0),    number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_extra_temp[1], live_number::extra_temperature(1),    number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_extra_temp[2], live_number::extra_temperature(2),    number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_extra_temp[3], live_number::extra_temperature(3),    number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_extra_temp[4], live_number::extra_temperature(4),    number_scan::tenths),
    number_of("actual_%s_temp_c",            sensor_extra_temp[5], live_number::extra_temperature(5),    number_scan::tenths),
    // clang-format on
};

// True if each byte of the record is filled by exactly one row.
consteval bool does_live_table_fill_the_record() {
  std::size_t filled = 0;
  for (const live_row& row : LIVE_TABLE) {
    if (!row.number.is_none()) filled += sizeof(std::int32_t);
    if (row.text != nullptr) filled += sizeof(live_text);
    for (const live_row* other = LIVE_TABLE; other != &row; ++other) {
      if (!row.number.is_none() && row.number == other->number) return false;
      if (row.text != nullptr && row.text == other->text) return false;
    }
  }
  return filled == sizeof(LiveRecord);
}
static_assert(does_live_table_fill_the_record());

}  // namespace skypost
