#include "settings_tool/enabled_steps.h"

#include "channels/channels.h"
#include "common/composing.h"
#include "common/request_parts.h"
#include "common/settings_file.h"
#include "endpoints/endpoints.h"
#include "live/report_parser.h"

namespace skypost {
namespace {

constexpr std::string_view SCHEME_END = "://";

called_server called_by(const upload& upload) {
  const std::string command = text_of(upload, station_without_values(""));
  const std::string server = take_apart(command).server;
  const std::size_t scheme_end = server.find(SCHEME_END);
  const std::size_t host = scheme_end + SCHEME_END.size();
  return {.scheme = server.substr(0, scheme_end),
          .host = server.substr(host, server.find(':', host) - host),
          .address = server,
          .named_by = in_endpoint_file(server_of(upload, station_settings)),
          .is_certificate_checked = command.find(" --no-check-certificate ") == std::string::npos};
}

// The server of the step's own upload, and that of its rapid-fire variant if it differs. Leaves out refused endpoints.
std::vector<called_server> http_servers_of(const run_step& step) {
  std::vector<called_server> servers;
  for (const handed_out& one : handed_out_by(step)) {
    if (one.upload.by != carrier::http) continue;
    const endpoint row = server_of(one.upload, station_settings);
    if (is_refused(row)) continue;
    if (one.rapid != nullptr && row == server_of(*step.upload, station_settings)) continue;
    called_server server = called_by(one.upload);
    server.switched_by = switch_of(step);
    if (one.rapid != nullptr) {
      server.title = "rapid-fire server";
      server.switched_by = description_of(*one.rapid->rapid_enabled).name;
      server.loss = "only the regular uploads are sent there";
    }
    servers.push_back(server);
  }
  return servers;
}

// The second server is tried if the first does not accept the packet.
std::vector<called_server> cwop_servers() {
  const auto server_at = [](endpoint row, endpoint other, const char* title) {
    called_server server{.scheme = "",
                         .host = endpoint_value(row),
                         .address = endpoint_value(row) + (':' + std::to_string(CWOP_PORT)),
                         .named_by = in_endpoint_file(row),
                         .title = title,
                         .switched_by = description_of(cwop_enabled).name};
    if (!is_unknown_server(endpoint_value(other))) server.loss = "only the other is tried";
    return server;
  };
  return {server_at(endpoint::cwop_first, endpoint::cwop_second, "first server"),
          server_at(endpoint::cwop_second, endpoint::cwop_first, "second server")};
}

}  // namespace

station station_without_values(const char* address) {
  reset_live_record(live_record);
  return {station_settings, live_record, moment_at(0), {platform(), address}};
}

std::vector<const run_step*> enabled_steps() {
  std::vector<const run_step*> steps;
  for (const run_step& step : run_list())
    if (is_enabled(step, station_settings)) steps.push_back(&step);
  return steps;
}

std::vector<handed_out> handed_out_by(const run_step& step) {
  std::vector<handed_out> all;
  for (const handed_out& one : all_handed_out())
    if (&one.step == &step && one.is_on(station_settings)) all.push_back(one);
  return all;
}

std::string networks_by(carrier carried_by) {
  return networks_where([=](const run_step& step) { return step.upload->by == carried_by; });
}

std::vector<called_server> servers_of(const run_step& step) {
  if (step.upload->by == carrier::http) return http_servers_of(step);
  if (!refused_among(needed_by(*step.upload, station_settings)).empty()) return {};
  if (step.upload == &CWOP) return cwop_servers();
  if (step.upload == &APRS && !station_settings.text(aprs_host).empty())
    return {{.scheme = "",
             .host = std::string(station_settings.text(aprs_host)),
             .address = std::string(station_settings.text(aprs_host)) + ':' +
                        std::to_string(station_settings.unsigned_integer(aprs_port)),
             .named_by = description_of(aprs_host).name,
             .switched_by = switch_of(step)}};
  return {};
}

}  // namespace skypost
