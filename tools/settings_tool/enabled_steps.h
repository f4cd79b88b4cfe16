#pragma once

#include <string>
#include <vector>

#include "common/networks.h"

// The run list under the process's settings.
namespace skypost {

// The steps that a run would take, in order.
std::vector<const run_step*> enabled_steps();

// The uploads of such a step, with its rapid-fire variant if that is on.
std::vector<handed_out> handed_out_by(const run_step& step);

// The networks of the enabled steps for which `has` is true, each once: "AWEKAS, Wedaal". Empty if there is none.
template <typename condition>
std::string networks_where(condition has) {
  std::string names;
  for (const run_step* const step : enabled_steps())
    if (has(*step)) names += (names.empty() ? "" : ", ") + network_of(*step);
  return names;
}

// Those whose uploads are carried like this.
std::string networks_by(carrier carried_by);

// A server that a step connects to.
struct called_server {
  std::string scheme;    // "http", "https"; empty: another protocol
  std::string host;      // without a port
  std::string address;   // "https://example.org:8080"; for another protocol, "example.org:14580"
  std::string named_by;  // where to change it: "windit in /etc/skypost/endpoints"
  std::string title = "server";
  std::string switched_by{};                // the switch that uses it
  std::string loss = "nothing reaches it";  // consequence for the network if it is unreachable
  bool is_certificate_checked = true;
};

// None if the step connects to none, or its server is not set.
std::vector<called_server> servers_of(const run_step& step);

// This station without any values.
station station_without_values(const char* address);

}  // namespace skypost
