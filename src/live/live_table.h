#pragma once

#include <cstdint>

#include "base/value.h"
#include "live/live_record.h"
#include "settings/fields.h"

namespace skypost {

// How the value behind a key is read.
enum class scan : std::uint8_t {
  tenths,          // a decimal number, stored in tenths
  rounded,         // a decimal number, stored whole
  integer,         // the whole number in front of the first other character
  integer_tenths,  // the same, stored in tenths
  word,            // the run of characters up to the next blank
  time,            // 14 digits, YYYYMMDDhhmmss, local time
};

// One key of the report and the field, or for a time the fields, that it fills.
struct live_row {
  const char* key;           // "%s" stands for the sensor's identifier
  const text_field* sensor;  // the setting that selects the sensor; nullptr: the key names none
  scan form;
  std::int32_t LiveRecord::*number;  // of a time the seconds since the epoch; may be nullptr there
  live_text LiveRecord::*text;
  std::int32_t absent_number;
  const char* absent_text;
};

constexpr live_row number_of(const char* key, const text_field* sensor, std::int32_t LiveRecord::*field,
                             scan form, std::int32_t absent = MISSING_VALUE) {
  return {key, sensor, form, field, nullptr, absent, nullptr};
}

constexpr live_row word_of(const char* key, const text_field* sensor, live_text LiveRecord::*field,
                           const char* absent) {
  return {key, sensor, scan::word, nullptr, field, 0, absent};
}

constexpr live_row time_of(const char* key, const text_field* sensor, live_text LiveRecord::*time_of_day,
                           std::int32_t LiveRecord::*seconds = nullptr) {
  return {key, sensor, scan::time, seconds, time_of_day, 0, "---"};
}

// The rows in the order in which the keys are looked up. A pattern that ends in a blank matches only
// where its key ends, not the start of a longer one.
inline constexpr live_row LIVE_TABLE[] = {
    // clang-format off
    number_of("actual_%s_temp_c",            &sensor_temp,   &LiveRecord::temp10,                  scan::tenths),
    number_of("actual_%s_hum_rel",           &sensor_hum,    &LiveRecord::hum,                     scan::integer),
    number_of("actual_%s_dew_c",             &sensor_dew,    &LiveRecord::dew10,                   scan::tenths),
    number_of("actual_%s_press_hpa",         &sensor_press,  &LiveRecord::press10,                 scan::tenths),
    number_of("actual_%s_height_m",          &sensor_press,  &LiveRecord::height,                  scan::rounded, 0),
    number_of("actual_%s_altimeter_hpa",     &sensor_press,  &LiveRecord::altimeter10,             scan::tenths),
    number_of("actual_%s_sealevel_hpa",      &sensor_press,  &LiveRecord::sealevel10,              scan::tenths),
    number_of("actual_%s_dir_deg",           &sensor_wind,   &LiveRecord::winddir,                 scan::integer),
    word_of("actual_%s_dir_de ",             &sensor_wind,   &LiveRecord::winddirstr,              ""),
    word_of("actual_%s_dir_en ",             &sensor_wind,   &LiveRecord::winddirstren,            ""),
    number_of("actual_%s_speed_ms",          &sensor_wind,   &LiveRecord::wind10,                  scan::tenths),
    number_of("actual_%s_gustspeed_ms",      &sensor_wind,   &LiveRecord::gust10,                  scan::tenths),
    number_of("actual_%s_chill_c",           &sensor_wind,   &LiveRecord::chill10,                 scan::tenths),
    number_of("actual_%s_rate_mm",           &sensor_rain,   &LiveRecord::rain,                    scan::tenths),
    number_of("actual_%s_index ",            &sensor_uv,     &LiveRecord::uv10,                    scan::tenths),
    number_of("actual_%s_radiation_wqm",     &sensor_solar,  &LiveRecord::solar10,                 scan::tenths),
    number_of("actual_%s_temp_c",            &sensor_indoor, &LiveRecord::indoortemp10,            scan::tenths),
    number_of("actual_%s_hum_rel",           &sensor_indoor, &LiveRecord::indoorhum,               scan::integer),
    number_of("last15m_%s_total_mm",         &sensor_rain,   &LiveRecord::last15mraintotal10,      scan::tenths),
    number_of("last15m_%s_temp_c",           &sensor_temp,   &LiveRecord::last15mtemp10,           scan::tenths),
    number_of("last15m_%s_sealevel_hpa",     &sensor_press,  &LiveRecord::last15msealevel10,       scan::tenths),
    number_of("last15m_%s_gustspeedmax_ms",  &sensor_wind,   &LiveRecord::last15mmaxgust10,        scan::tenths),
    number_of("last15m_%s_speed_ms",         &sensor_wind,   &LiveRecord::last15mwind10,           scan::tenths),
    number_of("last15m_%s_maindir_deg",      &sensor_wind,   &LiveRecord::last15mwinddir,          scan::integer),
    number_of("last60m_%s_total_mm",         &sensor_rain,   &LiveRecord::last60mraintotal10,      scan::tenths),
    number_of("last24h_%s_total_mm",         &sensor_rain,   &LiveRecord::last24hraintotal10,      scan::tenths),
    number_of("last60m_%s_radiationmax_wqm", &sensor_solar,  &LiveRecord::last60mmaxsolar10,       scan::integer_tenths),
    number_of("last60m_%s_gustspeedmax_ms",  &sensor_wind,   &LiveRecord::last60mmaxgust10,        scan::tenths),
    number_of("last60m_%s_press_trend",      &sensor_press,  &LiveRecord::last60mpresstrend,       scan::integer),
    number_of("day1_%s_temp_c",              &sensor_temp,   &LiveRecord::todaytemp10,             scan::tenths),
    number_of("day1_%s_tempmax_c",           &sensor_temp,   &LiveRecord::todaymaxtemp10,          scan::tenths),
    time_of("day1_%s_tempmax_time",          &sensor_temp,   &LiveRecord::todaymaxtemptimestr,     &LiveRecord::todaymaxtemptime),
    number_of("day1_%s_tempmin_c",           &sensor_temp,   &LiveRecord::todaymintemp10,          scan::tenths),
    time_of("day1_%s_tempmin_time",          &sensor_temp,   &LiveRecord::todaymintemptimestr,     &LiveRecord::todaymintemptime),
    number_of("day1_%s_dewmax_c",            &sensor_dew,    &LiveRecord::todaymaxdew10,           scan::tenths),
    time_of("day1_%s_dewmax_time",           &sensor_dew,    &LiveRecord::todaymaxdewtimestr),
    number_of("day1_%s_dewmin_c",            &sensor_dew,    &LiveRecord::todaymindew10,           scan::tenths),
    time_of("day1_%s_dewmin_time",           &sensor_dew,    &LiveRecord::todaymindewtimestr),
    number_of("day1_%s_chillmin_c",          &sensor_wind,   &LiveRecord::todayminchill10,         scan::tenths),
    time_of("day1_%s_chillmin_time",         &sensor_wind,   &LiveRecord::todayminchilltimestr),
    number_of("day1_%s_hum_rel",             &sensor_hum,    &LiveRecord::todayhum,                scan::integer),
    number_of("day1_%s_hummax_rel",          &sensor_hum,    &LiveRecord::todaymaxhum,             scan::integer),
    time_of("day1_%s_hummax_time",           &sensor_hum,    &LiveRecord::todaymaxhumtimestr,      &LiveRecord::todaymaxhumtime),
    number_of("day1_%s_hummin_rel",          &sensor_hum,    &LiveRecord::todayminhum,             scan::integer),
    time_of("day1_%s_hummin_time",           &sensor_hum,    &LiveRecord::todayminhumtimestr,      &LiveRecord::todayminhumtime),
    number_of("day1_%s_indexmax ",           &sensor_uv,     &LiveRecord::todaymaxuv10,            scan::tenths),
    time_of("day1_%s_indexmax_time",         &sensor_uv,     &LiveRecord::todaymaxuvtimestr),
    number_of("day1_%s_radiationmax_wqm",    &sensor_solar,  &LiveRecord::todaymaxsolar10,         scan::integer_tenths),
    time_of("day1_%s_radiationmax_time",     &sensor_solar,  &LiveRecord::todaymaxsolartimestr),
    number_of("day1_%s_sealevelmax_hpa",     &sensor_press,  &LiveRecord::todaymaxsealevel10,      scan::tenths),
    time_of("day1_%s_sealevelmax_time",      &sensor_press,  &LiveRecord::todaymaxsealeveltimestr, &LiveRecord::todaymaxsealeveltime),
    number_of("day1_%s_sealevelmin_hpa",     &sensor_press,  &LiveRecord::todayminsealevel10,      scan::tenths),
    time_of("day1_%s_sealevelmin_time",      &sensor_press,  &LiveRecord::todayminsealeveltimestr, &LiveRecord::todayminsealeveltime),
    number_of("day1_%s_gustspeedmax_ms",     &sensor_wind,   &LiveRecord::todaymaxgust10,          scan::tenths),
    time_of("day1_%s_gustspeedmax_time",     &sensor_wind,   &LiveRecord::todaymaxgusttimestr),
    number_of("day1_%s_speedmax_ms",         &sensor_wind,   &LiveRecord::todaymaxwind10,          scan::tenths),
    time_of("day1_%s_speedmax_time",         &sensor_wind,   &LiveRecord::todaymaxwindtimestr),
    number_of("day1_%s_ratemax_mm",          &sensor_rain,   &LiveRecord::todaymaxrainrate10,      scan::tenths),
    time_of("day1_%s_ratemax_time",          &sensor_rain,   &LiveRecord::todaymaxrainratetimestr),
    number_of("day1_%s_total_mm",            &sensor_rain,   &LiveRecord::todayraintotal10,        scan::tenths),
    number_of("month1_%s_tempmax_c",         &sensor_temp,   &LiveRecord::monthmaxtemp10,          scan::tenths),
    number_of("month1_%s_tempmin_c",         &sensor_temp,   &LiveRecord::monthmintemp10,          scan::tenths),
    number_of("month1_%s_dewmax_c",          &sensor_dew,    &LiveRecord::monthmaxdew10,           scan::tenths),
    number_of("month1_%s_dewmin_c",          &sensor_dew,    &LiveRecord::monthmindew10,           scan::tenths),
    number_of("month1_%s_chillmin_c",        &sensor_wind,   &LiveRecord::monthminchill10,         scan::tenths),
    number_of("month1_%s_hummax_rel",        &sensor_hum,    &LiveRecord::monthmaxhum,             scan::integer),
    number_of("month1_%s_hummin_rel",        &sensor_hum,    &LiveRecord::monthminhum,             scan::integer),
    number_of("month1_%s_indexmax ",         &sensor_uv,     &LiveRecord::monthmaxuv10,            scan::tenths),
    number_of("month1_%s_radiationmax_wqm",  &sensor_solar,  &LiveRecord::monthmaxsolar10,         scan::integer_tenths),
    number_of("month1_%s_sealevelmax_hpa",   &sensor_press,  &LiveRecord::monthmaxsealevel10,      scan::tenths),
    number_of("month1_%s_sealevelmin_hpa",   &sensor_press,  &LiveRecord::monthminsealevel10,      scan::tenths),
    number_of("month1_%s_gustspeedmax_ms",   &sensor_wind,   &LiveRecord::monthmaxgust10,          scan::tenths),
    number_of("month1_%s_ratemax_mm",        &sensor_rain,   &LiveRecord::monthmaxrainrate10,      scan::tenths),
    number_of("month1_%s_total_mm",          &sensor_rain,   &LiveRecord::monthraintotal10,        scan::tenths),
    number_of("year1_%s_tempmax_c",          &sensor_temp,   &LiveRecord::yearmaxtemp10,           scan::tenths),
    number_of("year1_%s_tempmin_c",          &sensor_temp,   &LiveRecord::yearmintemp10,           scan::tenths),
    number_of("year1_%s_dewmax_c",           &sensor_dew,    &LiveRecord::yearmaxdew10,            scan::tenths),
    number_of("year1_%s_dewmin_c",           &sensor_dew,    &LiveRecord::yearmindew10,            scan::tenths),
    number_of("year1_%s_chillmin_c",         &sensor_wind,   &LiveRecord::yearminchill10,          scan::tenths),
    number_of("year1_%s_hummax_rel",         &sensor_hum,    &LiveRecord::yearmaxhum,              scan::integer),
    number_of("year1_%s_hummin_rel",         &sensor_hum,    &LiveRecord::yearminhum,              scan::integer),
    number_of("year1_%s_indexmax ",          &sensor_uv,     &LiveRecord::yearmaxuv10,             scan::tenths),
    number_of("year1_%s_radiationmax_wqm",   &sensor_solar,  &LiveRecord::yearmaxsolar10,          scan::integer_tenths),
    number_of("year1_%s_sealevelmax_hpa",    &sensor_press,  &LiveRecord::yearmaxsealevel10,       scan::tenths),
    number_of("year1_%s_sealevelmin_hpa",    &sensor_press,  &LiveRecord::yearminsealevel10,       scan::tenths),
    number_of("year1_%s_gustspeedmax_ms",    &sensor_wind,   &LiveRecord::yearmaxgust10,           scan::tenths),
    number_of("year1_%s_ratemax_mm",         &sensor_rain,   &LiveRecord::yearmaxrainrate10,       scan::tenths),
    number_of("year1_%s_total_mm",           &sensor_rain,   &LiveRecord::yearraintotal10,         scan::tenths),
    word_of("actual_sunrise_standard_local", nullptr,        &LiveRecord::sunrise,                 "---"),
    word_of("actual_sunset_standard_local",  nullptr,        &LiveRecord::sunset,                  "---"),
    // clang-format on
};

// The extra temperatures have one key for all six sensors and an array in the record.
inline constexpr char EXTRA_TEMPERATURE_KEY[] = "actual_%s_temp_c";
inline constexpr int EXTRA_TEMPERATURES = 6;

// Every byte of the record is filled from one row.
consteval bool live_table_fills_the_record() {
  std::uint32_t filled = EXTRA_TEMPERATURES * sizeof(std::int32_t);
  for (const live_row& row : LIVE_TABLE) {
    if (row.number != nullptr) filled += sizeof(std::int32_t);
    if (row.text != nullptr) filled += sizeof(live_text);
  }
  return filled == sizeof(LiveRecord);
}
static_assert(live_table_fills_the_record());

}  // namespace skypost
