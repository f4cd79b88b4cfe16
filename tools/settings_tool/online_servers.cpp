#include "settings_tool/online_servers.h"

#include <algorithm>

#include "channels/channels.h"
#include "common/composing.h"
#include "common/plausibility.h"

namespace skypost {
namespace {

bool is_login_possible(const run_step& step, std::string_view call_sign) {
  return !call_sign.empty() && broken_call_sign(step, station_settings) == nullptr &&
         fault_of_port(step, station_settings).empty();
}

online_server used_by(const run_step& step, const called_server& called) {
  online_server server{.called = called,
                       .users = "the " + called.title + " of " + network_of(step),
                       .switches = called.switched_by,
                       .named_by = called.named_by,
                       .login = {},
                       .call_sign = {},
                       .is_general_pool = step.upload == &APRS};
  if (!server.is_aprs()) return server;
  const std::string text = text_of(*step.upload, station_without_values(""));
  server.login = text.substr(0, text.find('\n') + 1);
  server.call_sign = station_settings.text(server.is_general_pool ? aprs_call_sign : cwop_id);
  return server;
}

bool is_same(const online_server& one, const online_server& other) {
  return one.called.address == other.called.address && one.login == other.login &&
         one.called.is_certificate_checked == other.called.is_certificate_checked;
}

void add_to(std::vector<online_server>& servers, const online_server& wanted) {
  const auto same = std::find_if(servers.begin(), servers.end(),
                                 [&](const online_server& server) { return is_same(server, wanted); });
  if (same == servers.end()) {
    servers.push_back(wanted);
    return;
  }
  same->users += " and " + wanted.users;
  same->named_by += ", " + wanted.named_by;
  if (!same->switches.ends_with(wanted.switches)) same->switches += ", " + wanted.switches;
}

}  // namespace

std::vector<online_server> online_servers() {
  std::vector<online_server> servers;
  for (const run_step* const step : enabled_steps())
    for (const called_server& called : servers_of(*step)) {
      const online_server server = used_by(*step, called);
      if (is_unknown_server(called.host)) continue;
      if (server.is_aprs() && !is_login_possible(*step, server.call_sign)) continue;
      add_to(servers, server);
    }
  return servers;
}

}  // namespace skypost
