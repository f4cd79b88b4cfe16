#include "run/run_list.h"

#include <unistd.h>

#include "networks/weather_underground.h"
#include "run/last_run.h"
#include "run/report.h"

namespace skypost {
namespace {

constexpr unsigned STEP_LIMIT = 15;       // seconds; the alarm's default action ends the process
constexpr long long GATE_INTERVAL = 960;  // seconds

constexpr run_step RUN_LIST[] = {
    // clang-format off
    // name                  enabled                 user     alarm  gate   call
    {"HAMweather/weather4u", &hamweather_enabled,    nullptr, true,  false, upload_pwsweather},
    {"weather underground",  &wunderground_enabled,  nullptr, true,  false, upload_weather_underground},
    {"weatherflow",          &weatherflow_enabled,   nullptr, true,  false, upload_weatherflow},
    {"metoffice",            &metoffice_enabled,     nullptr, true,  false, upload_metoffice_wow},
    {"weatherbug",           &weatherbug_enabled,    nullptr, true,  false, upload_weatherbug},
    // clang-format on
};

void run_step_now(const run_step& step) {
  if (step.call() != 0) report_failure(step.name);
}

// The gate's time is kept whether or not the step behind it is enabled, and whatever it returned.
void run_gated_step(const run_step& step, const settings_record& settings, long long age, long long now) {
  if (age <= GATE_INTERVAL) return;
  alarm(STEP_LIMIT);
  if (settings.is_on(*step.enabled)) run_step_now(step);
  write_last_run(now);
}

bool is_due(const run_step& step, const settings_record& settings) {
  return settings.is_on(*step.enabled) && (step.user == nullptr || settings.text(*step.user).size() > 1);
}

}  // namespace

bool is_any_network_enabled(const settings_record& settings) {
  for (const run_step& step : RUN_LIST)
    if (settings.is_on(*step.enabled)) return true;
  return false;
}

void walk_run_list(const settings_record& settings, long long age, long long now) {
  for (const run_step& step : RUN_LIST) {
    if (step.behind_gate) {
      run_gated_step(step, settings, age, now);
    } else if (is_due(step, settings)) {
      if (step.own_alarm) alarm(STEP_LIMIT);
      run_step_now(step);
    }
  }
}

}  // namespace skypost
