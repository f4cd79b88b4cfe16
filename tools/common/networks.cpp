#include "common/networks.h"

#include <algorithm>
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

const row_names& names_of(const rapid_fire_network& network) {
  return ROW_NAMES[std::size(STEP_SWITCHES) + static_cast<std::size_t>(&network - RAPID_FIRE_NETWORKS)];
}

}  // namespace

std::string network_of(const run_step& step) { return description_of(*step.enabled).group; }

std::string switch_of(const run_step& step) { return description_of(*step.enabled).name; }

bool handed_out::is_on(const settings_record& settings) const {
  return rapid == nullptr ? settings.is_on(*step.enabled) : is_enabled(*rapid, settings);
}

std::vector<handed_out> all_handed_out() {
  std::vector<handed_out> all;
  const row_names* names = ROW_NAMES;
  for (const run_step& step : run_list()) {
    all.push_back({step, *step.upload, nullptr, *names++});
    for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
      if (network.enabled == step.enabled && step.upload->rapid_variant != nullptr)
        all.push_back({step, *step.upload->rapid_variant, &network, names_of(network)});
  }
  return all;
}

bool is_own_name(std::string_view name, const handed_out& one) {
  if (is_row_name(name, one.names)) return true;
  if (one.step.upload->rapid_variant != nullptr) return false;
  return std::any_of(std::begin(RAPID_FIRE_NETWORKS), std::end(RAPID_FIRE_NETWORKS),
                     [&](const rapid_fire_network& network) {
                       return network.enabled == one.step.enabled && is_row_name(name, names_of(network));
                     });
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

std::string_view group_named(std::string_view name) {
  for (const handed_out& one : all_handed_out())
    if (is_own_name(name, one) || is_network_name(name, one.names)) return one.names.network;
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (is_same_name(name, row.group)) return row.group;
  return {};
}

std::string suggested_network(const std::string& name, bool with_groups) {
  std::vector<std::string> names;
  for (const handed_out& one : all_handed_out()) {
    const std::string enabled = switch_of(one.step);
    for (const std::string& known : {std::string(one.upload.id), enabled.substr(0, enabled.rfind('_')),
                                     std::string(one.names.network), std::string(one.names.row)})
      names.push_back(known);
  }
  if (with_groups)
    for (const field_description& row : FIELD_DESCRIPTIONS) names.emplace_back(row.group);
  return suggestion_for(name, names);
}

}  // namespace skypost
