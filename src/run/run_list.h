#pragma once

#include "settings/record.h"

namespace skypost {

// One step of the one-shot run.
struct run_step {
  const char* name;  // under which its failure is reported
  const integer_field* enabled;
  const text_field* user;  // when set: the step also needs a text of more than one character here
  bool own_alarm;          // false: it runs under the alarm of the step before it
  bool behind_gate;        // runs only when enough time has passed since the last run
  int (*call)();           // 0, or another value with the reason in `error_text`
};

// True when at least one step is enabled.
bool is_any_network_enabled(const settings_record& settings);

// Runs every enabled step in the list's order, each under an alarm of 15 seconds, and reports the
// failures. `age` and `now` (seconds) are the last run's age and this run's time, for the gate.
void walk_run_list(const settings_record& settings, long long age, long long now);

}  // namespace skypost
