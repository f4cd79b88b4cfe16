// Checks that runs are started. If cron starts them, the timer is rightly inactive.

#include <fcntl.h>

#include <optional>
#include <string_view>

#include "base/paths.h"
#include "base/regular_file.h"
#include "common/descriptor.h"
#include "run/last_run.h"
#include "run/run_list.h"
#include "settings_tool/checks.h"
#include "status/status_line.h"

namespace skypost {
namespace {

constexpr long long LONG_AGO = 3'600;  // seconds; runs are five minutes apart

// Seconds since the last run began, according to its status page; nullopt if that records none.
std::optional<long long> recorded_run_age(long long now) {
  const descriptor page(open_sole_file(path_text(STATUS_PATH).c_str(), O_RDONLY));
  char start[100];
  const ssize_t count = page.is_open() ? read(page.number(), start, sizeof start) : 0;
  const std::string_view text(start, count > 0 ? static_cast<std::size_t>(count) : 0);
  std::size_t place = 0;
  status_record run;
  if (!read_line(text.substr(0, text.find('\n')), place, run) || place != RUN_RECORD) return std::nullopt;
  return now - run.time / 1'000;
}

}  // namespace

void check_runs(const checked_appliance& appliance, findings& found) {
  if (!is_any_network_enabled(station_settings)) return;
  const auto is_timer = [&](const char* state) { return appliance.timer.find(state) != std::string::npos; };
  const std::optional<long long> recorded = recorded_run_age(appliance.now);
  // Without a status page, use the last-run file, which runs write every 16 minutes if they get that far.
  if (recorded && *recorded < -TOLERATED_CLOCK_CHANGE) {
    found.push_back(
        "skypost: the last run began in the future, so the clock has been set back since, and it is not known"
        " whether runs are still started. Set the clock, and see skypost-status after the next run.");
    return;
  }
  const bool is_long_ago = recorded.value_or(last_run_age(appliance.now)) > LONG_AGO;
  if (is_timer("ActiveState=") && !is_timer("ActiveState=active") && is_long_ago)
    found.push_back(
        "skypost.timer: it is not active, and no run is recorded in the last hour, so nothing is sent."
        " Unless something else starts the runs, enable it: systemctl enable --now skypost.timer");
  else if (recorded && is_long_ago)
    found.push_back("skypost: the last run began " + std::to_string(*recorded / 60) +
                    " minutes ago, so nothing is sent. See whether skypost.timer or cron still starts one"
                    " every five minutes.");
  if (is_timer("ActiveState=active") && is_timer("UnitFileState=disabled"))
    found.push_back(
        "skypost.timer: it is active but not enabled, so nothing is sent once this machine has been started"
        " again. Enable it: systemctl enable skypost.timer");
}

}  // namespace skypost
