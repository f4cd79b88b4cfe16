#include "settings_tool/enabled_steps.h"

#include "base/endpoints.h"
#include "channels/channels.h"
#include "common/composing.h"
#include "common/request_parts.h"
#include "common/settings_file.h"
#include "live/report_parser.h"

namespace skypost {
namespace {

std::string in_endpoint_file(const std::string& name) { return '"' + name + "\" in /etc/skypost/endpoints"; }

constexpr std::string_view SCHEME_END = "://";

called_server server_of(const outgoing& what) {
  const std::string server = take_apart(text_of(what, station_without_values(station_settings, ""))).server;
  const std::size_t scheme_end = server.find(SCHEME_END);
  const std::string host = server.substr(scheme_end + SCHEME_END.size());
  return {server.substr(0, scheme_end), host.substr(0, host.find(':')),
          in_endpoint_file(endpoint_named_by(server))};
}

}  // namespace

station station_without_values(const settings_record& settings, const char* hardware_address) {
  reset_live_record();
  return {settings, live_record, moment_at(0), {platform(), hardware_address}};
}

std::vector<const run_step*> enabled_steps() {
  std::vector<const run_step*> steps;
  for (const run_step& step : run_list())
    if (is_enabled(step, station_settings)) steps.push_back(&step);
  return steps;
}

std::vector<const outgoing*> handed_out_by(const run_step& step) {
  std::vector<const outgoing*> all;
  for (const handed_out& one : all_handed_out())
    if (&one.step == &step && one.is_on(station_settings)) all.push_back(&one.what);
  return all;
}

std::vector<called_server> servers_of(const run_step& step) {
  std::vector<called_server> servers;
  for (const outgoing* const what : handed_out_by(step))
    if (what->by == carrier::http) servers.push_back(server_of(*what));
  if (step.what == &CWOP)
    for (const endpoint row : {endpoint::cwop_first, endpoint::cwop_second})
      servers.push_back({"", endpoint_value(row), in_endpoint_file(endpoint_name(row))});
  if (step.what == &APRS && !station_settings.text(aprs_host).empty())
    servers.push_back({"", std::string(station_settings.text(aprs_host)), "aprs_host"});
  return servers;
}

}  // namespace skypost
