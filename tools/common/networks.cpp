#include "common/networks.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>

#include "base/paths.h"
#include "channels/channels.h"
#include "common/field_descriptions.h"
#include "common/settings_file.h"
#include "common/similar_name.h"
#include "networks/networks.h"

namespace skypost {
namespace {

// The name in lower case, without spaces, hyphens and underscores.
std::string simplified(std::string_view name) {
  std::string result;
  for (const char character : name)
    if (character != ' ' && character != '-' && character != '_')
      result += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return result;
}

const rapid_fire_network* rapid_fire_of(const run_step& step) {
  return std::find_if(std::begin(RAPID_FIRE_NETWORKS), std::end(RAPID_FIRE_NETWORKS),
                      [&](const rapid_fire_network& network) { return network.enabled == step.enabled; });
}

}  // namespace

std::string network_of(const run_step& step) { return description_of(*step.enabled).group; }

std::string switch_of(const run_step& step) { return description_of(*step.enabled).name; }

std::string switch_name(const run_step& step) {
  const std::string name = switch_of(step);
  return name.substr(0, name.rfind('_'));
}

bool is_same_name(std::string_view one, std::string_view other) {
  return simplified(one) == simplified(other);
}

bool is_network_name(std::string_view name, const run_step& step) {
  return is_same_name(name, network_of(step)) || is_same_name(name, step.name.text) ||
         is_same_name(name, step.upload->id) || is_same_name(name, switch_name(step));
}

bool handed_out::is_on(const settings_record& settings) const {
  return rapid == nullptr ? settings.is_on(*step.enabled) : is_enabled(*rapid, settings);
}

std::vector<handed_out> all_handed_out() {
  std::vector<handed_out> all;
  for (const run_step& step : run_list()) {
    all.push_back({step, *step.upload, nullptr});
    if (step.upload->rapid_variant != nullptr)
      all.push_back({step, *step.upload->rapid_variant, rapid_fire_of(step)});
  }
  return all;
}

endpoint server_of(const upload& upload, const settings_record& settings) {
  return static_cast<const http_network&>(upload).server.in(settings);
}

std::vector<endpoint> needed_by(const upload& upload, const settings_record& settings) {
  const auto all_of = [](std::span<const endpoint> rows) { return std::vector(rows.begin(), rows.end()); };
  switch (upload.by) {
    case carrier::http:
      return {server_of(upload, settings)};
    case carrier::file:
      return {};
    case carrier::aprs:
      return &upload == &CWOP ? all_of(CWOP_ENDPOINTS) : all_of(APRS_ENDPOINTS);
    case carrier::mail:
      break;
  }
  return all_of(mail_endpoints(settings));
}

std::vector<endpoint> refused_among(const std::vector<endpoint>& rows) {
  std::vector<endpoint> refused;
  std::copy_if(rows.begin(), rows.end(), std::back_inserter(refused), is_refused);
  return refused;
}

std::string in_endpoint_file(endpoint row) {
  return endpoint_name(row) + (" in " + appliance_path(ENDPOINTS_PATH));
}

std::vector<std::string> endpoint_faults(const std::string& errors) {
  constexpr std::string_view START = "Error: ";
  std::vector<std::string> faults;
  std::istringstream lines(errors);
  for (std::string line; std::getline(lines, line);)
    faults.push_back(line.starts_with(START) ? line.substr(START.size()) : line);
  return faults;
}

bool is_unknown_server(std::string_view server) {
  constexpr std::string_view SCHEME_END = "://";
  if (const std::size_t end = server.find(SCHEME_END); end != std::string_view::npos)
    server.remove_prefix(end + SCHEME_END.size());
  return server.substr(0, server.find(':')).ends_with(".invalid");
}

std::string suggested_network(const std::string& name) {
  std::vector<std::string> names;
  for (const handed_out& one : all_handed_out()) {
    names.emplace_back(one.upload.id);
    names.push_back(switch_name(one.step));
    names.push_back(network_of(one.step));
  }
  return suggestion_for(name, names);
}

}  // namespace skypost
