#pragma once

#include <cstdint>
#include <string_view>

#include "live/live_record.h"
#include "settings/record.h"

namespace skypost {

struct live_row;

// Finds the row's key in `report`, a NUL-terminated text, with the sensor from the settings filled in. Returns the
// text after it, or nullptr.
const char* find_value(std::string_view report, const live_row& row, const settings_record& settings);

// Sets every value of the record to missing.
void reset_live_record(LiveRecord& live);

// Looks up each key of the live table in `report`, a NUL-terminated text, and stores its value in `live`. The
// settings select the sensors. Then widens the extremes that the current values have already passed.
void parse_live_reply(const char* report, const settings_record& settings, LiveRecord& live);

// Converts a time of the report, 14 digits YYYYMMDDhhmmss in local time, to seconds since the epoch. A month 13 or
// a minute 75 carries over, as in mktime().
std::int64_t parse_server_time(const char* digits);

// Writes the time of day of such a time as HH:MM.
void format_hhmm(live_text& destination, const char* digits);

// Fills this process's live record from `report`, according to this process's settings. If the outdoor temperature,
// humidity or dew point is missing, makes all three missing and sets `live_data_stale`. In debug mode, prints the
// main values to standard error. Returns 0.
int load_live_record(const char* report);

}  // namespace skypost
