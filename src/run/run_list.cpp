#include "run/run_list.h"

#include <unistd.h>

#include "channels/channels.h"
#include "networks/networks.h"
#include "pullfiles/pullfiles.h"
#include "run/last_run.h"
#include "run/status_page.h"

namespace skypost {
namespace {

constinit const run_step RUN_LIST[] = {
#define STEP(name, enabled, user, limit, upload) {{name, enabled, user}, step_limit::limit, &(upload)},
#include "run/run_list.def"
};

void run(const run_step& step) {
  if (send_in_run(step.name.text, *step.upload) != 0) report_failure(step.name);
}

// The last-run time is written even if the step is disabled or failed.
void run_gated(const run_step& step, const settings_record& settings, long long age, long long now) {
  if (age <= GATE_INTERVAL) return;
  alarm(STEP_SECONDS);
  if (is_enabled(step, settings)) run(step);
  write_last_run(now);
}

}  // namespace

std::span<const run_step> run_list() { return RUN_LIST; }

bool is_any_network_enabled(const settings_record& settings) {
  for (const run_step& step : RUN_LIST)
    if (settings.is_on(*step.enabled)) return true;
  return false;
}

void walk_run_list(const settings_record& settings, long long age, long long now) {
  for (const run_step& step : RUN_LIST) {
    if (step.limit == step_limit::gated) {
      run_gated(step, settings, age, now);
    } else if (is_enabled(step, settings)) {
      if (step.limit == step_limit::fresh) alarm(STEP_SECONDS);
      run(step);
    }
  }
}

}  // namespace skypost
