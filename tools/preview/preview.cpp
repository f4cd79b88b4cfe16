#include "preview/preview.h"

#include <algorithm>
#include <cstdlib>

#include "base/paths.h"
#include "channels/channels.h"
#include "common/composing.h"
#include "common/errors.h"
#include "common/field_descriptions.h"
#include "common/networks.h"
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

// The reasons why a run would skip the upload, besides what the owner has entered for it.
void add_obstacles(step_preview& preview, const handed_out& one, const preview_inputs& inputs) {
  const settings_record& settings = inputs.source.settings;
  const auto add = [&](const std::string& text) { preview.faults.push_back({network_fault::stops, text}); };
  if (!settings.is_on(*one.step.enabled)) add(switched_off(*one.step.enabled));
  if (one.rapid != nullptr && !settings.is_on(*one.rapid->rapid_enabled))
    add(switched_off(*one.rapid->rapid_enabled));
  if (one.step.limit == step_limit::gated && inputs.last_run_age <= GATE_INTERVAL)
    add(last_turn(inputs.last_run_age) + "; next due after " + std::to_string(GATE_INTERVAL));
  for (const missing_value& value : missing_outdoor_values(inputs.source.live, inputs.report))
    add("outdoor value missing: " + value.name + " (" + value.reason + ")");
  for (const endpoint row : refused_among(needed_by(one.upload, settings)))
    add("no valid value for " + in_endpoint_file(row));
}

void describe_way(step_preview& preview, const upload& upload, const settings_record& settings) {
  switch (upload.by) {
    case carrier::http:
      preview.how = preview.request.method;
      preview.where = {preview.request.server + preview.request.path};
      break;
    case carrier::file:
      preview.how = "file";
      for (const char* const directory : PULL_DIRECTORIES)
        preview.where.push_back(appliance_path(directory) + static_cast<const pull_file&>(upload).name);
      break;
    case carrier::aprs:
      preview.how = "APRS packet";
      if (&upload == &CWOP) {
        const std::string port = ':' + std::to_string(CWOP_PORT);
        preview.where = {endpoint_value(endpoint::cwop_first) + port,
                         endpoint_value(endpoint::cwop_second) + port + ", if the first fails"};
      } else {
        preview.where = {std::string(settings.text(aprs_host)) + ':' +
                         std::to_string(settings.unsigned_integer(aprs_port))};
      }
      break;
    case carrier::mail:
      preview.how = "mail";
      preview.where = {std::string(endpoint_value(endpoint::borgervejr_recipient)) + ", through " +
                       appliance_path(MAIL_PROGRAM_PATH)};
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
  compose_content(preview, one.upload, inputs);
  describe_way(preview, one.upload, inputs.source.settings);
  preview.position = position_in(one.upload, inputs.source.settings);
  add_obstacles(preview, one, inputs);
  for (const network_fault& fault : faults_of(one, inputs.source)) preview.faults.push_back(fault);
  std::stable_sort(
      preview.faults.begin(), preview.faults.end(),
      [](const network_fault& fault, const network_fault& other) { return fault.weight < other.weight; });
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
