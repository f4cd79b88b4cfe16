#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

inline constexpr std::int32_t DEFAULT_RAPID_INTERVAL = 30;  // seconds

// Writes the defaults: every network off, every text empty, the rapid-fire intervals 30 seconds.
// Bytes that have no default keep what they held.
void set_default_settings(settings_record& record);

}  // namespace skypost
