#include "settings_tool/checks.h"

#include "settings_tool/check_list.h"

namespace skypost {
namespace {

using check = void (*)(const checked_appliance& appliance, findings& found);

// What stops everything is first, then what stops many networks, one, a part of one, and what stops nothing.
constexpr check CHECKS[] = {
    // clang-format off
    check_layout,
    check_outdoor_selection,
    check_any_network,
    check_data_server,
    check_outdoor_values,
    check_clock,
    check_wget,
    check_pull_directories,
    check_mail_program,
    check_endpoint_file,
    check_servers,
    check_accounts,
    check_position,
    check_pushes,
    check_alarm_script,
    check_other_values,
    check_rapid_fire,
    check_file_mode,
    // clang-format on
};

}  // namespace

findings findings_of(const checked_appliance& appliance) {
  findings found;
  for (const check& row : CHECKS) row(appliance, found);
  return found;
}

}  // namespace skypost
