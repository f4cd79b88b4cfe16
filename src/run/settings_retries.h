#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// Loads the settings, at most three times, with a pause of a second after each failure: the web pages may be
// writing them. Returns 0, or -1 with the defaults in the record.
std::int32_t load_settings_with_retries(settings_record& record);

}  // namespace skypost
