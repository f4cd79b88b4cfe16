#include "settings_tool/enabled_steps.h"

#include <algorithm>

#include "base/endpoints.h"
#include "channels/channels.h"
#include "common/settings_file.h"
#include "live/report_parser.h"
#include "run/rapid_fire.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

bool is_in_rapid_fire(const run_step& step) {
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
    if (network.enabled == step.enabled && network.rapid_enabled != nullptr)
      return station_settings.is_on(*network.rapid_enabled);
  return false;
}

// The server in the command of a request. The command is composed without the owner's texts, so that none of
// them is taken for it.
called_server server_in_request(const outgoing& what) {
  settings_record settings = station_settings;
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.is_text()) settings.bytes[row.field.offset] = 0;
  const std::string command = composed(what, settings, "");

  constexpr std::string_view MARK = "://";
  const std::size_t mark = command.find(MARK);
  const std::size_t scheme = command.find_last_of('"', mark) + 1;
  std::string authority = command.substr(mark + MARK.size());
  authority.erase(std::min(authority.find_first_of("/?\""), authority.size()));
  authority.erase(0, authority.find('@') + 1);  // no '@': npos + 1 is 0
  return {command.substr(scheme, mark - scheme), authority.substr(0, authority.find(':')), ""};
}

struct named_endpoint {
  const char* name;
  endpoint row;
};

constexpr named_endpoint NAMED_ENDPOINTS[] = {
#define ENDPOINT(name, kind, value) {#name, endpoint::name},
#include "base/endpoints.def"
};

// Under what name the endpoint file can give another server than this one.
std::string endpoint_with(const std::string& host) {
  for (const named_endpoint& row : NAMED_ENDPOINTS)
    if (std::string_view(endpoint_value(row.row)).find(host) != std::string_view::npos) return row.name;
  return {};
}

}  // namespace

std::string composed(const outgoing& what, const settings_record& settings, const char* hardware_address) {
  reset_live_record();
  outgoing_text text;
  what.compose(text, {settings, live_record, moment_at(0), {platform(), hardware_address}});
  return text.c_str();
}

std::vector<const run_step*> enabled_steps() {
  std::vector<const run_step*> steps;
  for (const run_step& step : run_list())
    if (is_enabled(step, station_settings)) steps.push_back(&step);
  return steps;
}

std::vector<const outgoing*> handed_out_by(const run_step& step) {
  std::vector<const outgoing*> all = {step.what};
  const http_network* const network = as_http_network(*step.what);
  if (network != nullptr && network->rapid_form != nullptr && is_in_rapid_fire(step))
    all.push_back(network->rapid_form);
  return all;
}

std::string network_of(const run_step& step) { return description_of(*step.enabled).group; }

std::string switch_of(const run_step& step) { return description_of(*step.enabled).name; }

std::vector<called_server> servers_of(const run_step& step) {
  std::vector<called_server> servers;
  for (const outgoing* const what : handed_out_by(step))
    if (what->by == carrier::http) servers.push_back(server_in_request(*what));
  if (step.what == &CWOP)
    for (const endpoint row : {endpoint::cwop_first, endpoint::cwop_second})
      servers.push_back({"", endpoint_value(row), ""});
  for (called_server& server : servers)
    server.named_by = '"' + endpoint_with(server.host) + "\" in /etc/skypost/endpoints";
  if (step.what == &APRS && !station_settings.text(aprs_host).empty())
    servers.push_back({"", std::string(station_settings.text(aprs_host)), "aprs_host"});
  return servers;
}

}  // namespace skypost
