#include "preview/preview.h"

#include <algorithm>
#include <cstdlib>

#include "base/paths.h"
#include "channels/channels.h"
#include "common/composing.h"
#include "common/errors.h"
#include "common/field_descriptions.h"
#include "common/networks.h"
#include "common/plausibility.h"
#include "common/printable.h"
#include "common/settings_file.h"
#include "endpoints/endpoints.h"
#include "preview/field_sources.h"
#include "preview/hidden_secrets.h"
#include "pullfiles/pullfiles.h"

namespace skypost {
namespace {

using texts = std::vector<std::string>;

// A network's name also selects its rapid-fire variant if that is on.
bool is_meant(const std::string& name, const handed_out& one, const settings_record& settings) {
  return is_own_name(name, one) ||
         (is_network_name(name, one.names) && (one.rapid == nullptr || one.is_on(settings)));
}

std::string switched_off(const integer_field& enabled) {
  return std::string("switched off: ") + description_of(enabled).name + " is 0";
}

// The age is negative if the clock has been set back.
std::string last_turn(long long age) {
  return "last served " + std::to_string(std::abs(age)) +
         (age < 0 ? " seconds in the future" : " seconds ago");
}

// The reasons why a run would skip the upload.
texts obstacles_of(const handed_out& one, const preview_inputs& inputs) {
  const settings_record& settings = inputs.source.settings;
  texts reasons;
  if (!settings.is_on(*one.step.enabled)) reasons.push_back(switched_off(*one.step.enabled));
  settings_record switched_on = settings;
  switched_on.set_integer(*one.step.enabled, 1);
  if (!is_enabled(one.step, switched_on))
    reasons.push_back(std::string(description_of(*one.step.user).name) + " needs two characters or more");
  if (one.rapid != nullptr && !settings.is_on(*one.rapid->rapid_enabled))
    reasons.push_back(switched_off(*one.rapid->rapid_enabled));
  if (one.step.limit == step_limit::gated && inputs.last_run_age <= GATE_INTERVAL)
    reasons.push_back(last_turn(inputs.last_run_age) + "; next due after " + std::to_string(GATE_INTERVAL));
  for (const missing_value& value : missing_outdoor_values(inputs.source.live, inputs.report))
    reasons.push_back("outdoor value missing: " + value.name + " (" + value.reason + ")");
  return reasons;
}

void warn_of_unknown_server(step_preview& preview, std::string_view server, const std::string& where_to_set) {
  if (is_unknown_server(server))
    preview.warnings.push_back("the network's server is not known: set " + where_to_set);
}

void describe_request(step_preview& preview, const handed_out& one, const settings_record& settings) {
  const request_parts& request = preview.request;
  preview.how = request.method;
  preview.where = {request.server + request.path};
  const endpoint server = server_of(one.upload, settings);
  if (!is_refused(server)) warn_of_unknown_server(preview, request.server, in_endpoint_file(server));
}

void describe_file(step_preview& preview, const handed_out& one) {
  preview.how = "file";
  for (const char* const directory : PULL_DIRECTORIES)
    preview.where.push_back(appliance_path(directory) + static_cast<const pull_file&>(one.upload).name);
}

// One known server is enough.
void warn_of_unknown_cwop_servers(step_preview& preview) {
  texts unknown;
  for (const endpoint row : {endpoint::cwop_first, endpoint::cwop_second})
    if (!is_refused(row) && is_unknown_server(endpoint_value(row))) unknown.push_back(in_endpoint_file(row));
  const char* const fault = unknown.size() == 1 ? "this server is not known; only the other is tried: set "
                                                : "the network's server is not known: set ";
  for (const std::string& where_to_set : unknown) preview.warnings.push_back(fault + where_to_set);
}

void describe_packet(step_preview& preview, const handed_out& one, const settings_record& settings) {
  const bool is_cwop = &one.upload == &CWOP;
  preview.how = "APRS packet";
  if (is_cwop) {
    const std::string port = ':' + std::to_string(CWOP_PORT);
    preview.where = {endpoint_value(endpoint::cwop_first) + port,
                     endpoint_value(endpoint::cwop_second) + port + ", if the first fails"};
    warn_of_unknown_cwop_servers(preview);
  } else {
    preview.where.push_back(std::string(settings.text(aprs_host)) + ':' +
                            std::to_string(settings.unsigned_integer(aprs_port)));
    if (settings.text(aprs_host).empty()) preview.warnings.push_back("aprs_host is not set");
    warn_of_unknown_server(preview, settings.text(aprs_host), "aprs_host");
  }
  for (const std::string& fault : faults_of_position(settings, network_of(one.step)))
    preview.warnings.push_back(fault);
  if (const std::string fault = fault_of_port(one.step, settings); !fault.empty())
    preview.warnings.push_back(fault);
  if (const text_field* const call_sign = broken_call_sign(one.step, settings))
    preview.obstacles.push_back(std::string(description_of(*call_sign).name) + " contains a line break");
}

void describe_mail(step_preview& preview) {
  preview.how = "mail";
  preview.where = {std::string(endpoint_value(endpoint::borgervejr_recipient)) + ", through " +
                   appliance_path(MAIL_PROGRAM_PATH)};
}

void describe_way(step_preview& preview, const handed_out& one, const preview_inputs& inputs) {
  switch (one.upload.by) {
    case carrier::http:
      return describe_request(preview, one, inputs.source.settings);
    case carrier::file:
      return describe_file(preview, one);
    case carrier::aprs:
      return describe_packet(preview, one, inputs.source.settings);
    case carrier::mail:
      return describe_mail(preview);
  }
}

void compose_content(step_preview& preview, const upload& upload, const preview_inputs& inputs) {
  const std::string text =
      inputs.with_secrets ? text_of(upload, inputs.source) : text_without_secrets(upload, inputs.source);
  if (upload.by == carrier::http) {
    preview.request = take_apart(text);
    name_sources(preview.request, upload, inputs.source);
  } else {
    preview.text = text;
  }
}

step_preview preview_of(const handed_out& one, const preview_inputs& inputs) {
  step_preview preview;
  preview.network = network_of(one.step);
  if (one.rapid != nullptr) preview.network += ", rapid fire";
  if (one.upload.by == carrier::file) preview.network += ", file";
  preview.name = one.names.row;
  preview.id = one.upload.id;
  preview.obstacles = obstacles_of(one, inputs);
  compose_content(preview, one.upload, inputs);
  describe_way(preview, one, inputs);
  for (const endpoint row : refused_among(needed_by(one.upload, inputs.source.settings)))
    preview.obstacles.push_back("no valid value for " + in_endpoint_file(row));
  if (*inputs.source.host.hardware_address == '\0' && is_hardware_address_told(one.upload, inputs.source))
    preview.warnings.push_back("ifconfig shows no hardware address of eth0 after \"HWaddr\"; " +
                               network_of(one.step) + " identifies the station by it");
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.group == network_of(one.step) && is_text_lacking(one.upload, inputs.source, row))
      preview.warnings.push_back(std::string(row.name) + " is not set");
  preview.missing = missing_values(one.upload, inputs.source, inputs.report);
  return preview;
}

}  // namespace

void check_networks(const texts& names) {
  const std::vector<handed_out> all = all_handed_out();
  const settings_record nothing{};
  for (const std::string& name : names)
    if (std::none_of(all.begin(), all.end(),
                     [&](const handed_out& one) { return is_meant(name, one, nothing); }))
      throw usage_error("no network " + quoted(name) + suggested_network(name) + " (--names lists all)");
}

std::vector<step_preview> make_previews(const preview_inputs& inputs, const texts& names) {
  check_networks(names);
  const settings_record& settings = inputs.source.settings;
  std::vector<step_preview> previews;
  for (const handed_out& one : all_handed_out()) {
    const auto is_named = [&](const std::string& name) { return is_meant(name, one, settings); };
    if (names.empty() ? one.is_on(settings) : std::any_of(names.begin(), names.end(), is_named))
      previews.push_back(preview_of(one, inputs));
  }
  return previews;
}

}  // namespace skypost
