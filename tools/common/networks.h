#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/network_names.h"
#include "endpoints/endpoints.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"

// The run list in the owner's terms.
namespace skypost {

// The step's network, which is also its group of settings ("Weather Underground").
std::string network_of(const run_step& step);

// The setting that switches the step on.
std::string switch_of(const run_step& step);

// An upload of the run list: a step's own, or its rapid-fire variant.
struct handed_out {
  const run_step& step;
  const struct upload& upload;
  const rapid_fire_network* rapid;  // nullptr: the step's own upload
  const row_names& names;

  bool is_on(const settings_record& settings) const;
};

// All uploads in the order of a run, each rapid-fire variant after its step's own upload.
std::vector<handed_out> all_handed_out();

// True if the owner means this upload alone by `name`. Rapid fire sends WindIt what a run does.
bool is_own_name(std::string_view name, const handed_out& one);

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

// The group of settings that `name` refers to: a network's, or any other by its own name. Empty if there is none.
std::string_view group_named(std::string_view name);

// Returns "; did you mean windfinder?" if `name` resembles that of a network, an upload or, if `with_groups`, another
// group of settings. Otherwise an empty text.
std::string suggested_network(const std::string& name, bool with_groups = false);

}  // namespace skypost
