#pragma once

#include <string>
#include <vector>

#include "settings_tool/enabled_steps.h"

namespace skypost {

// A server that a run would connect to, and the networks that use it.
struct online_server {
  called_server called;   // as the first network calls it
  std::string users;      // "the server of WindIt and the server of SH-Netz"
  std::string switches;   // "windit_enabled, shnetz_enabled"
  std::string named_by;   // where to change it: "windit in /etc/skypost/endpoints, shnetz in ..."
  std::string login;      // the login line of an APRS server; empty for others
  std::string call_sign;  // in the login line
  bool is_general_pool;   // an APRS server that drops packets of unverified stations

  bool is_aprs() const { return called.scheme.empty(); }
};

// Each server once, in the order of a run. Leaves out unknown servers and logins that no run would make, because other
// checks report them.
std::vector<online_server> online_servers();

}  // namespace skypost
