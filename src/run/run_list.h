#pragma once

#include <cstdint>
#include <span>

#include "compose/upload.h"
#include "run/upload_switch.h"

namespace skypost {

// When a step's time limit starts.
enum class step_limit : std::uint8_t {
  fresh,   // with the step
  shared,  // with the step before
  gated,   // as `fresh`, but the step runs only if the last run is old enough
};

// A step's time limit in seconds; SIGALRM ends the process when it expires.
inline constexpr unsigned STEP_SECONDS = 15;

// A gated step runs only if the last run was more than this many seconds ago.
inline constexpr long long GATE_INTERVAL = 960;

// One step of the one-shot run.
struct run_step : upload_switch {
  step_limit limit;
  const struct upload* upload;
};

// All steps, in the order of a run.
std::span<const run_step> run_list();

// Calls `visit` for every upload, in the order of the list, each rapid-fire variant after the regular one.
template <typename visitor>
void for_each_upload(visitor visit) {
  for (const run_step& step : run_list()) {
    visit(*step.upload);
    if (step.upload->rapid_variant != nullptr) visit(*step.upload->rapid_variant);
  }
}

// True if at least one network is on.
bool is_any_network_enabled(const settings_record& settings);

// Runs the enabled steps in order, each within its time limit, and reports failures. `age` is the last run's age in
// seconds, and `now` the time of this run in seconds since the epoch; the gated step needs them.
void walk_run_list(const settings_record& settings, long long age, long long now);

}  // namespace skypost
