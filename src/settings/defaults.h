#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

inline constexpr std::int32_t DEFAULT_RAPID_INTERVAL = 30;  // seconds

// Writes the defaults: all networks off, no sensors and accounts, the rapid-fire intervals 30 seconds, the
// name of this machine, and the appliance's mail sender. Other bytes are unchanged.
void set_default_settings(settings_record& record);

}  // namespace skypost
