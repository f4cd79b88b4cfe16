#pragma once

#include <cstdint>
#include <string_view>

#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

struct live_row;

// Finds the key of a row of the live table, with the sensor filled in that the settings select, and returns
// the text after it; nullptr if it is missing. `report` is NUL-terminated.
const char* find_value(std::string_view report, const live_row& row, const settings_record& settings);

// Resets every field to its value for "missing".
void reset_live_record(LiveRecord& live);

// Looks up every key of the live table in `report`, a NUL-terminated text, for the sensors that the settings
// select, and stores what it finds in `live`; then widens the extremes that the current values have already
// passed.
void parse_live_reply(const char* report, const settings_record& settings, LiveRecord& live);

// Converts 14 digits, YYYYMMDDhhmmss in local time, to seconds since the epoch. A month 13 or a minute 75
// carries over, as with mktime.
std::int64_t parse_server_time(const char* digits);

// Writes the time of day in such a time as HH:MM.
void format_hhmm(live_text& destination, const char* digits);

// Fills this process's live record from `report`, by this process's settings. If the outdoor temperature,
// humidity or dew point is missing, all three are set to missing and `live_data_stale` is set. In debug mode
// the main values go to standard error. Returns 0.
std::int32_t load_live_record(const char* report);

}  // namespace skypost
