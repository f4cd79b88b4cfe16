#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "run/rapid_fire.h"
#include "run/run_list.h"

// The run list as its owner speaks of it.
namespace skypost {

// The group of settings of a step's network, as "Weather Underground", and the setting that switches it on.
std::string network_of(const run_step& step);
std::string switch_of(const run_step& step);

// The setting without its "_enabled": "windfinder".
std::string switch_name(const run_step& step);

// True when two names differ in nothing but letter case, blanks, hyphens and underscores.
bool is_same_name(std::string_view one, std::string_view other);

// True when an owner may mean the step's network by `name`: its group of settings, its switch without "_enabled",
// what its failures are reported under, or the step's own id.
bool is_network_name(std::string_view name, const run_step& step);

// One thing that the run list can hand out: a step's own, or its network's rapid-fire form.
struct handed_out {
  const run_step& step;
  const outgoing& what;
  const rapid_fire_network* rapid;  // nullptr: the step's own

  bool is_on(const settings_record& settings) const;
};

// All of them, in the order of a run, a rapid-fire form after its step's own.
std::vector<handed_out> all_handed_out();

// The name that the endpoint file has for the server in effect that `server` ends in; empty when it is in none.
// Where several networks have one server, the name that is most like the id of the text.
std::string endpoint_named_by(std::string_view server, std::string_view id);

// A setting of the endpoint file as its owner finds it: "windit in /etc/skypost/endpoints".
std::string in_endpoint_file(const std::string& name);

// What the endpoint file was complained of for, each with what is skipped for it, without a full stop.
std::vector<std::string> skipped_by(const std::string& complaints);

// True when nobody knows the network's server, so that a name in the domain .invalid is in its place. `server` is
// a host, with or without a scheme before it and a port after it.
bool is_unknown_server(std::string_view server);

// "; did you mean windfinder?" for what is much like the name of a network or of one of its texts; otherwise
// nothing.
std::string suggested_network(const std::string& name);

}  // namespace skypost
