#pragma once

#include "settings/record.h"

namespace skypost {

// Writes the defaults: every network off, every text empty, the rapid-fire intervals 30 seconds.
// Bytes that have no default keep what they held.
void set_default_settings(settings_record& record);

}  // namespace skypost
