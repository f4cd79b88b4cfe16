#pragma once

#include <string>
#include <vector>

#include "common/networks.h"

// The run list under `station_settings`.
namespace skypost {

// The steps that a run would execute, in order.
std::vector<const run_step*> enabled_steps();

// The uploads of a step that are on: its own and its rapid-fire variant.
std::vector<handed_out> handed_out_by(const run_step& step);

// The networks of the enabled steps for which `has` is true: "AWEKAS, Wedaal". Empty if there are none.
template <typename condition>
std::string networks_where(condition has) {
  std::string names;
  for (const run_step* const step : enabled_steps())
    if (has(*step)) names += (names.empty() ? "" : ", ") + network_of(*step);
  return names;
}

// The networks of the enabled steps with this carrier.
std::string networks_by(carrier carried_by);

// A server that a step connects to.
struct called_server {
  std::string scheme;    // "http" or "https"; empty for another protocol
  std::string host;      // without a port
  std::string address;   // "https://example.org:8080"; for another protocol, "example.org:14580"
  std::string named_by;  // where to change it: "windit in /etc/skypost/endpoints"
  std::string title = "server";
  std::string switched_by{};                // the setting that switches it on
  std::string loss = "nothing reaches it";  // consequence for the network if it is unreachable
  bool is_certificate_checked = true;
};

// The servers that a step connects to, except refused ones and those that are not set.
std::vector<called_server> servers_of(const run_step& step);

// This station with all values missing. Resets `live_record`.
station station_without_values(const char* address);

}  // namespace skypost
