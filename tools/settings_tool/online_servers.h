#pragma once

#include <string>
#include <vector>

#include "settings_tool/enabled_steps.h"

namespace skypost {

// A server that a run would connect to, and who would.
struct online_server {
  called_server called;   // as the first of them calls it
  std::string users;      // "the server of WindIt and the server of SH-Netz"
  std::string switches;   // "windit_enabled, shnetz_enabled"
  std::string named_by;   // where to change it: "windit in /etc/skypost/endpoints, shnetz in ..."
  std::string login;      // the line for an APRS server; empty for others
  std::string call_sign;  // in it
  bool is_general_pool;   // an APRS server that takes no unverified stations

  bool is_aprs() const { return called.scheme.empty(); }
};

// Each server once, in the order of a run. Left out is what the other checks find: servers that are not known, and logins
// that no run would make.
std::vector<online_server> online_servers();

}  // namespace skypost
