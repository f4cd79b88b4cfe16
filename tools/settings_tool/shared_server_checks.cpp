// Checks whether networks share a server. By default none do, so it is probably a mistake in the endpoint file.

#include <map>
#include <string_view>

#include "base/paths.h"
#include "common/printable.h"
#include "common/settings_file.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"

namespace skypost {
namespace {

// The host and port of a server.
std::string host_in(std::string_view server) {
  constexpr std::string_view SCHEME_END = "://";
  if (const std::size_t end = server.find(SCHEME_END); end != std::string_view::npos)
    server.remove_prefix(end + SCHEME_END.size());
  return std::string(server.substr(0, server.find('/')));
}

// A server on this machine may be a relay, which several networks may share.
bool is_this_machine(std::string_view host) {
  return host.starts_with("127.") || host.starts_with("localhost");
}

}  // namespace

void check_shared_servers(const checked_appliance&, findings& found) {
  std::map<std::string, std::vector<std::string>> networks_at;
  for (const run_step* const step : enabled_steps()) {
    for (const handed_out& one : handed_out_by(*step)) {
      if (one.upload.by != carrier::http) continue;
      const endpoint row = server_of(one.upload, station_settings);
      const std::string host = host_in(endpoint_value(row));
      if (is_refused(row) || is_unknown_server(host) || is_this_machine(host)) continue;
      std::vector<std::string>& networks = networks_at[host];
      if (networks.empty() || networks.back() != network_of(*step)) networks.push_back(network_of(*step));
    }
  }
  for (const auto& [host, networks] : networks_at) {
    if (networks.size() == 1) continue;
    std::string names = networks.front();
    for (std::size_t i = 1; i < networks.size(); ++i) names += ", " + networks[i];
    found.push_back(
        appliance_path(ENDPOINTS_PATH) + ": " + names + " have one server, " + quoted(host) +
        ", so it gets the passwords of all of them. Correct it, unless that server passes on what it gets.");
  }
}

}  // namespace skypost
