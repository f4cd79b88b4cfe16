#pragma once

#include <cstdint>
#include <span>

#include "networks/networks.h"
#include "run/failure.h"
#include "settings/record.h"

namespace skypost {

// How a step sends what it hands out: by a network function, or by a writer of pull files with its file's
// name. Returns 0, or another value with the reason in `error_text`.
struct step_call {
  consteval step_call(int (*sender)()) : send(sender) {}
  consteval step_call(int (*writer)(const char* name), const char* file_name)
      : write(writer), file(file_name) {}

  int operator()() const { return send != nullptr ? send() : write(file); }

  int (*send)() = nullptr;
  int (*write)(const char* name) = nullptr;
  const char* file = nullptr;
};

// The limit of 15 seconds that a step runs under.
enum class step_limit : std::uint8_t {
  own,     // it begins with the step
  shared,  // it is what the step before has left
  gated,   // as `own`, and the step runs only when the last run was long enough ago
};

// A gated step runs only when the last run is longer ago than this, in seconds.
inline constexpr long long GATE_INTERVAL = 960;

// One step of the one-shot run.
struct run_step {
  failure_name name;
  const integer_field* enabled;
  const text_field* user;  // when set: the step also needs a text of more than one character here
  step_limit limit;
  step_call call;
  const outgoing* what;  // what `call` sends, and its composer
};

// Every step, in the order in which a run takes them.
std::span<const run_step> run_list();

// Calls `visit` with everything that a run can hand out, in the order of the list, a network's rapid-fire
// form after its normal one.
template <typename visitor>
void for_each_outgoing(visitor visit) {
  for (const run_step& step : run_list()) {
    visit(*step.what);
    if (const http_network* const network = as_http_network(*step.what);
        network != nullptr && network->rapid_form != nullptr)
      visit(*network->rapid_form);
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
