#pragma once

#include <cstdint>
#include <string_view>

#include "live/live_record.h"

namespace skypost {

struct live_row;

// The text in `report` after the key of a row of the live table, as the station's settings complete it;
// nullptr when the report lacks the key. A NUL follows the report.
const char* find_value(std::string_view report, const live_row& row);

// Resets every field of the live record to its not-reported value.
void reset_live_record();

// Looks up every key of the live table in `report` (a NUL-terminated text) and stores what it finds in the
// live record, then widens the extremes that the current values have already passed.
void parse_live_reply(const char* report);

// Seconds since the epoch of a time written as 14 digits, YYYYMMDDhhmmss, read as local time. A
// month 13 or a minute 75 is carried over, as mktime does.
std::int64_t parse_server_time(const char* digits);

// Writes the time of day in such a time as HH:MM.
void format_hhmm(live_text& destination, const char* digits);

// Fills the live record from `report`. When the outdoor temperature, humidity or dew point is not in it,
// all three become missing and `live_data_stale` is set. In debug mode the main values go to standard
// error. Returns 0.
std::int32_t load_live_record(const char* report);

}  // namespace skypost
