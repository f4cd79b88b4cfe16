#pragma once

#include "settings_tool/checks.h"

// The checks. Each adds what it finds to `found`.
namespace skypost {

// Of the settings file, the report and the clock.
void check_layout(const checked_appliance& appliance, findings& found);
void check_outdoor_selection(const checked_appliance& appliance, findings& found);
void check_data_server(const checked_appliance& appliance, findings& found);
void check_outdoor_values(const checked_appliance& appliance, findings& found);
void check_clock(const checked_appliance& appliance, findings& found);
void check_other_values(const checked_appliance& appliance, findings& found);
void check_file_mode(const checked_appliance& appliance, findings& found);

// Of what the uploads are handed to.
void check_wget(const checked_appliance& appliance, findings& found);
void check_pull_directories(const checked_appliance& appliance, findings& found);
void check_mail_program(const checked_appliance& appliance, findings& found);
void check_alarm_script(const checked_appliance& appliance, findings& found);

// Of the networks that are switched on.
void check_accounts(const checked_appliance& appliance, findings& found);
void check_servers(const checked_appliance& appliance, findings& found);
void check_any_network(const checked_appliance& appliance, findings& found);
void check_endpoint_file(const checked_appliance& appliance, findings& found);
void check_position(const checked_appliance& appliance, findings& found);
void check_pushes(const checked_appliance& appliance, findings& found);
void check_rapid_fire(const checked_appliance& appliance, findings& found);

}  // namespace skypost
