#pragma once

#include "run/failure.h"
#include "settings/record.h"

// The names and switches of run_list.def without the uploads, so that a program that only displays them does not link the
// networks.
namespace skypost {

struct upload_switch {
  failure_name name;
  const integer_field* enabled;                  // must be on
  const text_field* user = nullptr;              // if set, must have more than one character
  const integer_field* rapid_enabled = nullptr;  // if set, must be on too
};

// In the order of a run.
inline constexpr upload_switch STEP_SWITCHES[] = {
#define STEP(name, enabled, user, ...) {name, enabled, user},
#include "run/run_list.def"
};

// In the order of a pass.
inline constexpr upload_switch RAPID_FIRE_SWITCHES[] = {
#define RAPID_FIRE(name, enabled, rapid_enabled, ...) {name, enabled, nullptr, rapid_enabled},
#include "run/run_list.def"
};

// True if the network is switched on and every other setting the row requires is present.
bool is_enabled(const upload_switch& row, const settings_record& settings);

}  // namespace skypost
