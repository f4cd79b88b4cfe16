#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "endpoints/endpoints.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"

// The run list in the owner's terms.
namespace skypost {

// The step's network, which is also its group of settings ("Weather Underground").
std::string network_of(const run_step& step);

// The setting that switches the step on, and the same without "_enabled": "windfinder".
std::string switch_of(const run_step& step);
std::string switch_name(const run_step& step);

// True if two names are equal, ignoring case, spaces, hyphens and underscores.
bool is_same_name(std::string_view one, std::string_view other);

// True if `name` is the step's group of settings, its switch without "_enabled", the name under which it reports
// failures, or its upload's id.
bool is_network_name(std::string_view name, const run_step& step);

// An upload of the run list: a step's own, or its rapid-fire variant.
struct handed_out {
  const run_step& step;
  const struct upload& upload;
  const rapid_fire_network* rapid;  // nullptr: the step's own upload

  bool is_on(const settings_record& settings) const;
};

// All uploads in the order of a run, each rapid-fire variant after its step's own upload.
std::vector<handed_out> all_handed_out();

// The endpoint that names the server of an HTTP upload.
endpoint server_of(const upload& upload, const settings_record& settings);

// The endpoints without which an upload is not sent. A file needs none.
std::vector<endpoint> needed_by(const upload& upload, const settings_record& settings);

// The refused endpoints among `rows`.
std::vector<endpoint> refused_among(const std::vector<endpoint>& rows);

// Where the owner can change an endpoint: "windit in /etc/skypost/endpoints".
std::string in_endpoint_file(endpoint row);

// The messages of load_endpoints(), each without "Error: ". None ends in a full stop.
std::vector<std::string> endpoint_faults(const std::string& errors);

// True if the server is a placeholder under .invalid, because the network's server is not known. `server` is a host,
// optionally with a scheme and a port.
bool is_unknown_server(std::string_view server);

// Returns "; did you mean windfinder?" if `name` resembles that of a network or an upload, otherwise an empty text.
std::string suggested_network(const std::string& name);

}  // namespace skypost
