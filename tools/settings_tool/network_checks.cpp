#include <algorithm>
#include <cctype>
#include <string_view>

#include "channels/channels.h"
#include "common/composing.h"
#include "common/plausibility.h"
#include "networks/networks.h"
#include "run/rapid_fire.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"

namespace skypost {
namespace {

// True if the setting is unset and would be sent. Only boards with certain addresses send meteonews_mac.
bool is_lacking(const run_step& step, const field_description& row, const checked_appliance& appliance) {
  const station source = station_without_values(appliance.hardware_address.c_str());
  const std::vector<handed_out> all = handed_out_by(step);
  return std::any_of(all.begin(), all.end(),
                     [&](const handed_out& one) { return is_text_lacking(one.upload, source, row); });
}

// "station ID" for the meaning "station ID, as on the web page"
std::string thing_of(const field_description& row) {
  const std::string_view meaning = row.meaning;
  return std::string(meaning.substr(0, meaning.find_first_of(",;")));
}

void check_packet(const run_step& step, findings& found) {
  if (const text_field* const call_sign = broken_call_sign(step, station_settings))
    found.push_back(std::string(description_of(*call_sign).name) +
                    ": it contains a line break, so nothing is sent to " + network_of(step) +
                    ". Set it to the call sign alone.");
  if (const std::string fault = fault_of_port(step, station_settings); !fault.empty()) found.push_back(fault);
}

bool is_hexadecimal(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char one) { return std::isxdigit(one) != 0; });
}

// True if a network would read a different text in a query or a form. An owner may write "%2B" for "+" and "%25" for
// "%"; wget encodes a "%" that is not followed by two hexadecimal digits.
bool is_read_differently(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '+') return true;
    if (text[i] != '%') continue;
    const std::string_view code = text.substr(i + 1, 2);
    const bool is_escape = code.size() == 2 && is_hexadecimal(code);
    if (is_escape && code != "2B" && code != "2b" && code != "25") return true;
  }
  return false;
}

void check_url_values(const run_step& step, findings& found) {
  const std::vector<handed_out> all = handed_out_by(step);
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_text() || !is_read_differently(station_settings.text(row.as_text()))) continue;
    const station source = station_without_values("");
    const auto sends = [&](const handed_out& one) { return is_url_value(one.upload, source, row.as_text()); };
    if (std::any_of(all.begin(), all.end(), sends))
      found.push_back(
          std::string(row.name) + ": it contains \"+\" or an escape such as \"%41\", which " +
          network_of(step) +
          " reads as a blank or as another character. Write \"%2B\" for \"+\" and \"%25\" for \"%\".");
  }
}

// A file holds as much of a long site ID as fits.
void check_site_id(findings& found) {
  const field_description& row = description_of(metoffice_site_id);
  const std::string fault = fault_of_site_id(row, station_settings.text(metoffice_site_id));
  if (!fault.empty())
    found.push_back(std::string(row.name) + ": it is as long as it can be, and probably cut off: " + fault +
                    '.');
}

void check_account(const run_step& step, const checked_appliance& appliance, findings& found) {
  const std::string network = network_of(step);
  if (step.upload->by == carrier::aprs) check_packet(step, found);
  if (step.upload == &METOFFICE) check_site_id(found);
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (row.group != network || !is_unset(station_settings, row)) continue;
    const bool is_told = is_lacking(step, row, appliance);
    // aprs_host is needed although it is not part of the packet.
    if (!is_told && row.field.offset != aprs_host.offset) continue;
    const bool is_call_sign = is_told && step.upload->by == carrier::aprs && row.field.is_text();
    found.push_back(std::string(row.name) + ": " + network + " is switched on without its " + thing_of(row) +
                    (is_call_sign ? ", and an empty one matches every reply: each upload counts as good,"
                                    " whatever the server says"
                                  : "") +
                    ". Set it, or set " + switch_of(step) + " to 0.");
  }
  check_url_values(step, found);
  if (appliance.at_hand == extent::machine && appliance.hardware_address.empty() &&
      is_hardware_address_told(*step.upload, station_without_values("")))
    found.push_back(
        "eth0: ifconfig shows no hardware address after \"HWaddr\", by which " + network +
        " identifies the station. The interface must be called eth0; or set " + switch_of(step) +
        " to 0. If ifconfig writes \"ether\", as Debian's does, use busybox's: apt install busybox && "
        "dpkg-divert --local --rename /sbin/ifconfig && ln -s /bin/busybox /sbin/ifconfig");
}

void check_server(const run_step& step, const called_server& server, findings& found) {
  if (is_unknown_server(server.host))
    found.push_back(server.switched_by + ": the " + server.title + " of " + network_of(step) +
                    " is not known, so " + server.loss + ". Set " + server.named_by +
                    " to the network's server, or set " + server.switched_by + " to 0.");
}

}  // namespace

void check_any_network(const checked_appliance&, findings& found) {
  if (!is_any_network_enabled(station_settings))
    found.push_back("no network is switched on, so nothing is sent. Set one's NAME_enabled to 1.");
}

void check_accounts(const checked_appliance& appliance, findings& found) {
  for (const run_step* const step : enabled_steps()) check_account(*step, appliance, found);
}

void check_servers(const checked_appliance&, findings& found) {
  for (const run_step* const step : enabled_steps())
    for (const called_server& server : servers_of(*step)) check_server(*step, server, found);
}

void check_position(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::aprs);
  if (networks.empty()) return;
  for (const std::string& fault : faults_of_position(station_settings, networks)) found.push_back(fault);
}

void check_pushes(const checked_appliance&, findings& found) {
  for (const run_step& step : run_list())
    if (station_settings.is_on(*step.enabled) && !is_enabled(step, station_settings))
      found.push_back(std::string(description_of(*step.user).name) +
                      ": it has fewer than two characters, so nothing is pushed to " + network_of(step) +
                      " and only its file is written. Set it to the user name.");
}

void check_rapid_fire(const checked_appliance&, findings& found) {
  settings_record valid = station_settings;
  make_intervals_valid(valid);
  for (const rapid_fire_network& network : RAPID_FIRE_NETWORKS) {
    if (network.interval == nullptr || !is_enabled(network, station_settings)) continue;
    const std::int32_t interval = station_settings.integer(*network.interval);
    const std::int32_t used = valid.integer(*network.interval);
    if (interval != used)
      found.push_back(std::string(description_of(*network.interval).name) + ": " + std::to_string(interval) +
                      " seconds is too short, so " + std::to_string(used) +
                      " are used instead. Set it to 1 or more.");
  }
}

}  // namespace skypost
