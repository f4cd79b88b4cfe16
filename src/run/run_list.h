#pragma once

#include "settings/record.h"

namespace skypost {

// True when at least one step is enabled.
bool is_any_network_enabled(const settings_record& settings);

// Runs every enabled step in the list's order, each under an alarm of 15 seconds, and reports the
// failures. `age` and `now` (seconds) are the last run's age and this run's time, for the gate.
void walk_run_list(const settings_record& settings, long long age, long long now);

}  // namespace skypost
