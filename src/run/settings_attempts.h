#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// Loads the settings, at most three times, with a pause of a second after each failure. Returns 0, or
// -1 with the defaults in the record.
std::int32_t load_settings_in_three_attempts(settings_record& record);

// Puts 30 seconds for a rapid-fire interval below 1.
void make_intervals_valid(settings_record& record);

}  // namespace skypost
