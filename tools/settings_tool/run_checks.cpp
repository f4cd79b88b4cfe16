// Checks that runs are started, and how the latest uploads went. If cron starts the runs, the timer is rightly inactive.

#include <sstream>
#include <string_view>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "common/file_start.h"
#include "run/last_run.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"
#include "settings_tool/checks.h"
#include "status/words.h"

namespace skypost {
namespace {

// What skypost-status shows; without runs if no status is kept.
judged_status current_status(const checked_appliance& appliance) {
  static status_records records;
  status_at_work at_work{};
  for (status_record& record : records) record = {};
  if (read_status(records, at_work) == 0) keep_status(records);
  return judge(records, station_settings, at_work, appliance.now);
}

bool is_active(const std::string& unit) { return unit.find("ActiveState=active") != std::string::npos; }

// The file in which cron is told to start runs; empty if there is none.
std::string file_of_cron() {
  constexpr std::string_view PROGRAM = "bin/skypost";
  for (const char* const file : {"/etc/cron.d/skypost", "/etc/crontab", "/var/spool/cron/crontabs/root"}) {
    std::istringstream lines(file_start(appliance_path(file), 100'000));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t place = line.find(PROGRAM);
      if (place != line.npos && !line.starts_with('#') && line.substr(place + PROGRAM.size(), 1) != "-")
        return appliance_path(file);
    }
  }
  return {};
}

bool is_of_too_many_requests(std::string reason) {
  for (char& letter : reason) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  return reason.find("too many requests") != std::string::npos;
}

}  // namespace

void check_runs(const checked_appliance& appliance, findings& found) {
  if (!is_any_network_enabled(station_settings)) return;
  const judged_status status = current_status(appliance);
  const bool is_recorded = status.run != run_state::never_begun;
  // Without a status page, use the last-run file, which runs write every 16 minutes if they get that far.
  if (is_recorded && status.is_run_in_future) {
    found.push_back(
        "skypost: the last run began in the future, so the clock has been set back since, and it is not known"
        " whether runs are still started. Set the clock, and see skypost-status after the next run.");
    return;
  }
  const bool is_long_ago =
      (is_recorded ? status.seconds_since_run : last_run_age(appliance.now)) > tolerance().seconds_since_run;
  if (!appliance.timer.empty() && !is_active(appliance.timer) && is_long_ago)
    found.push_back(
        "skypost.timer: it is not active, and no run is recorded in the last hour, so nothing is sent."
        " Unless something else starts the runs, enable it: systemctl enable --now skypost.timer");
  else if (is_recorded && is_long_ago)
    found.push_back("skypost: the last run began " + std::to_string(status.seconds_since_run / 60) +
                    " minutes ago, so nothing is sent. See whether skypost.timer or cron still starts one"
                    " every five minutes.");
  if (!is_active(appliance.timer)) return;
  if (appliance.timer.find("UnitFileState=disabled") != std::string::npos)
    found.push_back(
        "skypost.timer: it is active but not enabled, so nothing is sent once this machine has been started"
        " again. Enable it: systemctl enable skypost.timer");
  if (const std::string file = file_of_cron(); !file.empty())
    found.push_back(file +
                    ": cron starts runs, and so does skypost.timer, so everything is sent twice. Remove the"
                    " line, or disable the timer: systemctl disable --now skypost.timer");
}

void check_rapid_fire_service(const checked_appliance& appliance, findings& found) {
  if (appliance.rapid_service.empty() || is_active(appliance.rapid_service)) return;
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
    if (network.rapid_enabled != nullptr && is_enabled(network, station_settings)) {
      const std::string name = description_of(*network.rapid_enabled).name;
      found.push_back(name +
                      ": it is 1, but skypost-rapid.service is not active, so there is no rapid fire. Set " +
                      name + " to 0, or start it: systemctl enable --now skypost-rapid.service");
    }
}

void check_latest_uploads(const checked_appliance& appliance, findings& found) {
  const judged_status status = current_status(appliance);
  for (std::size_t place = FIRST_STEP_RECORD; place < STATUS_RECORDS; ++place) {
    if (status.uploads[place] != upload_state::hung && status.uploads[place] != upload_state::failed)
      continue;
    const std::string name = RECORD_NAMES[place];
    const std::uint32_t failures = failures_in_row(status, place);
    fixed_text<LONGEST_REASON> text;
    append_reason(text, status, place, station_settings);
    const std::string reason = text.c_str();
    found.push_back(name + ": the latest upload failed" +
                    (failures > 1 ? ", " + std::to_string(failures) + " in a row now" : std::string()) +
                    ": " + reason + ". " +
                    (is_of_too_many_requests(reason)
                         ? "Send less often: see RUNNING LESS OFTEN in skypost-failures(7)."
                         : "See what it replies now: skypost-settings try " +
                               (name.find(' ') == name.npos ? name : '"' + name + '"')));
  }
}

}  // namespace skypost
