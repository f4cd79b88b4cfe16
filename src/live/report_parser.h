#pragma once

#include <cstdint>

#include "live/live_record.h"

namespace skypost {

// Puts every field of the live record to what it holds when the report does not give it.
void reset_live_record();

// Looks every key of the live table up in `report` (a NUL-terminated text) and stores what it finds
// in the live record, then widens the extremes that the current values have already passed.
void parse_live_reply(const char* report);

// Seconds since the epoch of a time written as 14 digits, YYYYMMDDhhmmss, read as local time. A
// month 13 or a minute 75 is carried over, as mktime does.
std::int64_t parse_server_time(const char* digits);

// Writes the time of day in such a time as HH:MM.
void format_hhmm(live_text& destination, const char* digits);

// Fills the live record from `report`. When the outdoor temperature, humidity or dew point is not
// there, all three are missing and `live_data_stale` is set. Writes the main values to standard
// error in debug mode. Returns 0.
std::int32_t load_live_record(const char* report);

}  // namespace skypost
