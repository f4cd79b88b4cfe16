#pragma once

#include <cstdint>
#include <span>

#include "compose/outgoing.h"
#include "run/failure.h"
#include "settings/record.h"

namespace skypost {

// When the limit of 15 seconds starts that a step runs under.
enum class step_limit : std::uint8_t {
  fresh,   // with the step
  shared,  // with the step before
  gated,   // as `fresh`, but the step runs only if the last run is old enough
};

// A gated step runs only when the last run is longer ago than this, in seconds.
inline constexpr long long GATE_INTERVAL = 960;

// One step of the one-shot run.
struct run_step {
  failure_name name;
  const integer_field* enabled;
  const text_field* user;  // when set: the step also needs a text of more than one character here
  step_limit limit;
  const outgoing* upload;
};

// Every step, in the order in which a run takes them.
std::span<const run_step> run_list();

// Calls `visit` for everything that a run can send, in the order of the list, a rapid-fire variant after the
// normal upload.
template <typename visitor>
void for_each_outgoing(visitor visit) {
  for (const run_step& step : run_list()) {
    visit(*step.upload);
    if (step.upload->rapid_variant != nullptr) visit(*step.upload->rapid_variant);
  }
}

// True when the step's network is switched on and has the user that it needs.
bool is_enabled(const run_step& step, const settings_record& settings);

// True when at least one network is switched on.
bool is_any_network_enabled(const settings_record& settings);

// Runs every enabled step in the list's order, each within its limit, and reports the failures. `age` and
// `now` (seconds) are the last run's age and this run's time, for the gate.
void walk_run_list(const settings_record& settings, long long age, long long now);

}  // namespace skypost
