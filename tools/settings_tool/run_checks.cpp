// The check of whether runs are started. Where cron starts them, the timer is rightly off.

#include "run/last_run.h"
#include "run/run_list.h"
#include "settings_tool/checks.h"

namespace skypost {
namespace {

constexpr long long LONG_AGO = 3'600;  // seconds; runs are five minutes apart, and recorded every 16

}  // namespace

void check_runs(const checked_appliance& appliance, findings& found) {
  const auto is_timer = [&](const char* state) { return appliance.timer.find(state) != std::string::npos; };
  if (appliance.timer.empty() || !is_any_network_enabled(station_settings)) return;
  if (!is_timer("ActiveState=active")) {
    if (last_run_age(appliance.now) > LONG_AGO)
      found.push_back(
          "skypost.timer: it is not active and no run is recorded in the last hour, so nothing is sent. "
          "Enable it: "
          "systemctl enable --now skypost.timer");
  } else if (is_timer("UnitFileState=disabled")) {
    found.push_back(
        "skypost.timer: it is active but not enabled, so nothing is sent after the next start of this "
        "machine. "
        "Enable it: systemctl enable skypost.timer");
  }
}

}  // namespace skypost
