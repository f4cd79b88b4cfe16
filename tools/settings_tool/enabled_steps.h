#pragma once

#include <string>
#include <vector>

#include "common/networks.h"

// What the run list does with the process's settings.
namespace skypost {

// The steps that are taken, in their order.
std::vector<const run_step*> enabled_steps();

// What such a step hands out: in rapid fire as well, when that is on.
std::vector<handed_out> handed_out_by(const run_step& step);

// The networks among the steps that are taken for which `has` is true, each once: "AWEKAS, Wedaal". Empty when
// there is none.
template <typename condition>
std::string networks_where(condition has) {
  std::string names;
  for (const run_step* const step : enabled_steps())
    if (has(*step)) names += (names.empty() ? "" : ", ") + network_of(*step);
  return names;
}

// A server that a step calls, or resolves the name of.
struct called_server {
  std::string scheme;    // "http", "https"; empty: it speaks another protocol
  std::string host;      // without a port
  std::string named_by;  // the setting for another: "windit in /etc/skypost/endpoints"
  std::string title = "server";
  std::string switched_by{};                // the setting that has it called
  std::string loss = "nothing reaches it";  // what follows for the network when it cannot be called
};

// None for a step that calls none, or whose server is not set.
std::vector<called_server> servers_of(const run_step& step);

// This station when every value of the report is missing.
station station_without_values(const char* address);

}  // namespace skypost
