#include "preview/preview.h"

#include <algorithm>
#include <cctype>

#include "base/paths.h"
#include "channels/channels.h"
#include "preview/hidden_secrets.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

using texts = std::vector<std::string>;

// One thing that the run list can hand out: a step's own, or its network's rapid-fire form.
struct form {
  const run_step& step;
  const outgoing& what;
  const rapid_fire_network* rapid;  // nullptr: the step's own
};

const rapid_fire_network* rapid_fire_of(const run_step& step) {
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS)
    if (network.call == step.call.send) return &network;
  return nullptr;
}

std::vector<form> all_forms() {
  std::vector<form> forms;
  for (const run_step& step : run_list()) {
    forms.push_back({step, *step.what, nullptr});
    const http_network* const network = as_http_network(*step.what);
    if (network != nullptr && network->rapid_form != nullptr)
      forms.push_back({step, *network->rapid_form, rapid_fire_of(step)});
  }
  return forms;
}

bool is_on(const form& one, const settings_record& settings) {
  return settings.is_on(*one.step.enabled) &&
         (one.rapid == nullptr || settings.is_on(*one.rapid->rapid_enabled));
}

const char* group_of(const form& one) { return description_of(*one.step.enabled).group; }

// Letters and digits alone, in lower case.
std::string simplified(std::string_view name) {
  std::string result;
  for (const char character : name)
    if (const auto byte = static_cast<unsigned char>(character); std::isalnum(byte) != 0)
      result += static_cast<char>(std::tolower(byte));
  return result;
}

bool is_meant(const std::string& name, const form& one, const settings_record& settings) {
  const auto is_same = [&](const char* other) { return simplified(name) == simplified(other); };
  if (is_same(one.what.id)) return true;
  const bool is_network = is_same(one.step.what->id) || is_same(one.step.name.text) || is_same(group_of(one));
  return is_network && (one.rapid == nullptr || is_on(one, settings));
}

std::string switched_off(const integer_field& enabled) {
  return std::string("switched off: ") + description_of(enabled).name + " is 0";
}

// Why a run would pass the step over.
texts obstacles_of(const form& one, const preview_source& source) {
  const settings_record& settings = source.from.settings;
  texts reasons;
  if (!settings.is_on(*one.step.enabled)) reasons.push_back(switched_off(*one.step.enabled));
  if (one.rapid != nullptr && !settings.is_on(*one.rapid->rapid_enabled))
    reasons.push_back(switched_off(*one.rapid->rapid_enabled));
  if (one.step.user != nullptr && settings.text(*one.step.user).size() <= 1)
    reasons.push_back(std::string(description_of(*one.step.user).name) + " needs two characters or more");
  if (one.step.limit == step_limit::gated && source.last_run_age <= GATE_INTERVAL)
    reasons.push_back("its last turn was " + std::to_string(source.last_run_age) +
                      " seconds ago; the next comes after " + std::to_string(GATE_INTERVAL));
  for (const missing_value& value : missing_outdoor_values(source.from.live, source.report))
    reasons.push_back("outdoor value missing: " + value.what + " (" + value.reason + ")");
  return reasons;
}

bool is_unknown(std::string_view server) { return server.find(".invalid") != std::string_view::npos; }

// The name in the endpoint file of the server that the text ends in.
const char* endpoint_name(std::string_view server) {
  struct named_endpoint {
    endpoint row;
    const char* name;
  };
  constexpr named_endpoint NAMES[] = {
#define ENDPOINT(name, kind, value) {endpoint::name, #name},
#include "base/endpoints.def"
  };
  for (const named_endpoint& row : NAMES)
    if (server.ends_with(endpoint_value(row.row))) return row.name;
  return "?";
}

std::string appliance_path(const char* path) {
  path_text text;
  append_appliance_path(text, path);
  return text.c_str();
}

void describe_request(step_preview& preview) {
  const request_parts& request = preview.request;
  preview.how = request.method;
  preview.where = {request.server + request.path};
  if (is_unknown(request.server))
    preview.warnings.push_back("the network's server is not known; " + appliance_path(ENDPOINTS_PATH) +
                               " can name it as " + endpoint_name(request.server));
}

void describe_file(step_preview& preview, const form& one) {
  preview.how = "file";
  for (const char* const directory : PULL_DIRECTORIES)
    preview.where.push_back(appliance_path(directory) + one.step.call.file);
}

void describe_packet(step_preview& preview, const form& one, const settings_record& settings) {
  const bool is_cwop = &one.what == &CWOP;
  preview.how = "APRS packet";
  if (is_cwop) {
    const std::string port = ':' + std::to_string(CWOP_PORT);
    preview.where = {endpoint_value(endpoint::cwop_first) + port,
                     endpoint_value(endpoint::cwop_second) + port + ", if the first fails"};
  } else {
    preview.where.push_back(std::string(settings.text(aprs_host)) + ':' +
                            std::to_string(settings.unsigned_integer(aprs_port)));
    if (settings.text(aprs_host).empty()) preview.warnings.push_back("aprs_host is empty");
  }
  const text_field& call_sign = is_cwop ? cwop_id : aprs_call_sign;
  if (settings.text(call_sign).find_first_of("\r\n") != std::string_view::npos)
    preview.obstacles.push_back(std::string(description_of(call_sign).name) + " holds a line break");
}

void describe_mail(step_preview& preview) {
  preview.how = "mail";
  preview.where = {std::string(endpoint_value(endpoint::borgervejr_recipient)) + ", through " +
                   appliance_path(MAIL_PROGRAM_PATH)};
}

void describe_way(step_preview& preview, const form& one, const preview_source& source) {
  switch (one.what.by) {
    case carrier::http:
      return describe_request(preview);
    case carrier::file:
      return describe_file(preview, one);
    case carrier::aprs:
      return describe_packet(preview, one, source.from.settings);
    case carrier::mail:
      return describe_mail(preview);
  }
}

void compose_content(step_preview& preview, const outgoing& what, const preview_source& source) {
  const auto with = [&](const settings_record& settings) {
    return text_of(what, {settings, source.from.live, source.from.now, source.from.host});
  };
  std::string one;
  std::string other;
  if (source.with_secrets) {
    one = other = with(source.from.settings);
  } else {
    one = with(with_secrets_replaced(source.from.settings, false));
    other = with(with_secrets_replaced(source.from.settings, true));
  }
  if (what.by == carrier::http)
    preview.request = with_differences_hidden(take_apart(one), take_apart(other));
  else
    preview.text = with_differences_hidden(one, other);
}

bool is_unset(const settings_record& settings, const settings_field& field) {
  if (field.is_secret()) return is_secret_unset(settings, field);
  return field.is_text() && settings.text(static_cast<const text_field&>(field)).empty();
}

// Found by setting each and looking whether the text changes.
texts unset_settings(const outgoing& what, const station& from) {
  const std::string as_set = text_of(what, from);
  texts names;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!is_unset(from.settings, row.field)) continue;
    settings_record changed = from.settings;
    if (row.field.is_text())
      changed.set_text(row.as_text(), "x");
    else
      changed.set_integer(row.as_integer(), 1);
    if (text_of(what, {changed, from.live, from.now, from.host}) != as_set) names.push_back(row.name);
  }
  return names;
}

step_preview preview_of(const form& one, const preview_source& source) {
  step_preview preview;
  preview.network = group_of(one);
  if (one.rapid != nullptr) preview.network += ", rapid fire";
  if (one.what.by == carrier::file) preview.network += ", file";
  preview.id = one.what.id;
  preview.obstacles = obstacles_of(one, source);
  compose_content(preview, one.what, source);
  describe_way(preview, one, source);
  preview.missing = missing_values(one.what, source.from, source.report);
  preview.unset = unset_settings(one.what, source.from);
  return preview;
}

}  // namespace

void check_networks(const texts& networks) {
  const std::vector<form> forms = all_forms();
  const settings_record nothing{};
  for (const std::string& name : networks) {
    if (std::any_of(forms.begin(), forms.end(),
                    [&](const form& one) { return is_meant(name, one, nothing); }))
      continue;
    std::string fault = "no network \"" + name + "\"; there are";
    for (const form& one : forms) {
      fault += &one == &forms.front() ? " " : ", ";
      fault += one.what.id;
    }
    throw usage_error(fault);
  }
}

std::vector<step_preview> make_previews(const preview_source& source, const texts& networks) {
  check_networks(networks);
  const settings_record& settings = source.from.settings;
  std::vector<step_preview> previews;
  for (const form& one : all_forms()) {
    const auto is_named = [&](const std::string& name) { return is_meant(name, one, settings); };
    if (networks.empty() ? is_on(one, settings) : std::any_of(networks.begin(), networks.end(), is_named))
      previews.push_back(preview_of(one, source));
  }
  return previews;
}

}  // namespace skypost
