#include "common/network_faults.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "base/text.h"
#include "channels/channels.h"
#include "common/composing.h"
#include "common/plausibility.h"
#include "common/printable.h"
#include "common/request_parts.h"
#include "networks/networks.h"

namespace skypost {
namespace {

using faults = std::vector<network_fault>;

std::string name_of(const settings_field& field) { return description_of(field).name; }

// "station ID" for the meaning "station ID, as on the web page"
std::string thing_of(const field_description& row) {
  const std::string_view meaning = row.meaning;
  return std::string(meaning.substr(0, meaning.find_first_of(",;")));
}

std::string switch_of(const handed_out& one) {
  return name_of(one.rapid == nullptr ? *one.step.enabled : *one.rapid->rapid_enabled);
}

called_server http_server(const handed_out& one, const station& source) {
  const std::string command = text_of(one.upload, source);
  const std::string address = take_apart(command).server;
  const std::size_t scheme_end = address.find("://");
  const std::size_t host = scheme_end + 3;
  called_server server{
      .scheme = address.substr(0, scheme_end),
      .host = address.substr(host, address.find(':', host) - host),
      .address = address,
      .named_by = in_endpoint_file(server_of(one.upload, source.settings)),
      .is_certificate_checked = command.find(" --no-check-certificate ") == std::string::npos};
  if (one.rapid != nullptr)
    server.title = "rapid-fire server", server.loss = "only the regular uploads are sent there";
  return server;
}

called_server aprs_server(const std::string& host, std::uint32_t port, const std::string& named_by) {
  return {.scheme = "", .host = host, .address = host + ':' + std::to_string(port), .named_by = named_by};
}

// The second server is tried if the first does not accept the packet.
std::vector<called_server> cwop_servers() {
  std::vector<called_server> servers;
  for (const endpoint row : {endpoint::cwop_first, endpoint::cwop_second})
    servers.push_back(aprs_server(endpoint_value(row), CWOP_PORT, in_endpoint_file(row)));
  servers[0].title = "first server";
  servers[1].title = "second server";
  for (const std::size_t i : {0U, 1U})
    if (servers[1 - i].is_known()) servers[i].loss = "only the other is tried";
  return servers;
}

void add_unknown_servers(const handed_out& one, const station& source, faults& found) {
  for (const called_server& server : servers_of(one, source))
    if (!server.is_known())
      found.push_back({server.loss == called_server{}.loss ? network_fault::loses : network_fault::doubtful,
                       switch_of(one) + ": the " + server.title + " of " + network_of(one.step) +
                           " is not known, so " + server.loss + ". Set " + server.named_by +
                           " to the network's server, or set " + switch_of(one) + " to 0.",
                       server.named_by != name_of(aprs_host)});
}

// aprs_host is needed although it is not part of the packet.
void add_missing_account(const handed_out& one, const station& source, faults& found) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (row.group != network_of(one.step) || !is_unset(source.settings, row)) continue;
    const bool is_sent = is_text_lacking(one.upload, source, row);
    if (!is_sent && row.field.offset != aprs_host.offset) continue;
    const bool is_call_sign = one.upload.by == carrier::aprs && is_sent && row.field.is_text();
    found.push_back(
        {network_fault::loses,
         std::string(row.name) + ": it is not set, but " + row.group + " needs the " + thing_of(row) +
             (is_call_sign ? "; an empty one matches every reply, so every upload counts as good" : "") +
             ". Set it, or set " + switch_of(one.step) + " to 0."});
  }
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

void add_doubtful_texts(const handed_out& one, const station& source, faults& found) {
  const auto add = [&](const field_description& row, const std::string& text) {
    found.push_back({network_fault::doubtful, row.name + (": it " + text)});
  };
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (row.group != network_of(one.step) || !row.field.is_text()) continue;
    const std::string_view text = source.settings.text(row.as_text());
    if (one.upload.by != carrier::aprs && (text.starts_with(' ') || text.ends_with(' ')))
      add(row, std::string(text.starts_with(' ') ? "begins" : "ends") + " with a blank, which " + row.group +
                   " takes for a part of it. Set it again without the blank.");
    if (is_read_differently(text) && is_url_value(one.upload, source, row.as_text()))
      add(row,
          "contains \"+\" or an escape such as \"%41\", which " + std::string(row.group) +
              " reads as a blank or as another character. Write \"%2B\" for \"+\" and \"%25\" for \"%\".");
    if (const std::string fault = fault_of_site_id(row, text); !fault.empty())
      add(row, "is as long as it can be, and probably cut off: " + fault + '.');
  }
}

void add_faults_of_packet(const handed_out& one, const settings_record& settings, faults& found) {
  const bool is_aprs = &one.upload == &APRS;
  const std::string network = network_of(one.step);
  const text_field& field = call_sign_of(one.upload);
  const std::string_view call_sign = settings.text(field);
  if (call_sign.find_first_of("\r\n") != std::string_view::npos)
    found.push_back({network_fault::stops, name_of(field) +
                                               ": it contains a line break, so nothing is sent to " +
                                               network + ". Set it to the call sign alone."});
  else if (call_sign.find(' ') != std::string_view::npos)
    found.push_back(
        {network_fault::loses, name_of(field) + ": it contains a blank, so the server of " + network +
                                   " does not take it for a call sign. Set it to the call sign alone."});
  const std::string_view host = settings.text(aprs_host);
  if (is_aprs && !is_alphanumeric(host, ".-"))
    found.push_back(
        {network_fault::loses, "aprs_host: " + quoted(host) +
                                   " is not the name of a host, so the server of APRS is not"
                                   " reached. Set it to the name alone; the port goes into aprs_port."});
  if (is_aprs)
    if (const std::string fault = fault_of_port(settings); !fault.empty())
      found.push_back({network_fault::loses, fault});
  for (const std::string& fault : faults_of_position(settings))
    found.push_back({network_fault::loses, fault});
  if (is_aprs && endpoint_value(endpoint::aprs_path) == std::string_view("TCPXX*"))
    found.push_back(
        {network_fault::doubtful,
         in_endpoint_file(endpoint::aprs_path) +
             ": servers of the general pool drop packets by way of TCPXX*, and each upload to APRS"
             " counts as good. Set it to TCPIP*.",
         true});
}

std::string letter_of(const integer_field& field, const settings_record& settings, const char* letters) {
  return {' ', letters[settings.is_on(field) ? 1 : 0]};
}

}  // namespace

std::vector<called_server> servers_of(const handed_out& one, const station& source) {
  if (!refused_among(needed_by(one.upload, source.settings)).empty()) return {};
  if (one.upload.by == carrier::http) {
    const bool is_known_twice = one.rapid != nullptr && server_of(one.upload, source.settings) ==
                                                            server_of(*one.step.upload, source.settings);
    if (is_known_twice) return {};
    return {http_server(one, source)};
  }
  if (&one.upload == &CWOP) return cwop_servers();
  const std::string host(source.settings.text(aprs_host));
  if (&one.upload != &APRS || host.empty()) return {};
  return {aprs_server(host, source.settings.unsigned_integer(aprs_port), name_of(aprs_host))};
}

const text_field& call_sign_of(const upload& upload) { return &upload == &CWOP ? cwop_id : aprs_call_sign; }

faults faults_of(const handed_out& one, const station& source) {
  const std::string network = network_of(one.step);
  settings_record switched_on = source.settings;
  switched_on.set_integer(*one.step.enabled, 1);
  if (!is_enabled(one.step, switched_on))
    return {{network_fault::stops, name_of(*one.step.user) +
                                       ": it has fewer than two characters, so nothing is pushed to " +
                                       network + " and only its file is written. Set it to the user name."}};
  faults found;
  add_unknown_servers(one, source, found);
  add_missing_account(one, source, found);
  if (one.upload.by == carrier::aprs) add_faults_of_packet(one, source.settings, found);
  if (*source.host.hardware_address == '\0' && is_hardware_address_told(one.upload, source))
    found.push_back(
        {network_fault::loses,
         "eth0: ifconfig shows no hardware address after \"HWaddr\", by which " + network +
             " identifies the station. The interface must be called eth0; or set " + switch_of(one) +
             " to 0. If ifconfig writes \"ether\", as Debian's does, use busybox's: apt install busybox && "
             "dpkg-divert --local --rename /sbin/ifconfig && ln -s /bin/busybox /sbin/ifconfig"});
  add_doubtful_texts(one, source, found);
  if ((&one.upload == &WINDFINDER || &one.upload == &WINDIT) && source.settings.text(sensor_wind).empty())
    found.push_back({network_fault::doubtful,
                     "sensor_wind: no sensor is selected, but " + network +
                         " is about wind. Select one: \"skypost-settings sensors\" lists them."});
  if (one.rapid != nullptr && one.rapid->interval != nullptr &&
      source.settings.integer(*one.rapid->interval) < 1)
    found.push_back({network_fault::doubtful,
                     name_of(*one.rapid->interval) +
                         ": it is below 1, so 30 seconds are used instead. Set it to 1 or more."});
  return found;
}

std::string position_in(const upload& upload, const settings_record& settings) {
  if (upload.by != carrier::aprs || !faults_of_position(settings).empty()) return {};
  const auto written = [&](const coordinate& one) {
    char text[40];
    std::snprintf(text, sizeof text, "%d\u00b0%02d.%02ld'", settings.integer(one.degrees),
                  settings.integer(one.minutes), std::lround(settings.integer(one.seconds) * 100.0 / 60));
    return std::string(text);
  };
  return written(POSITION[0]) + letter_of(latitude_south, settings, "NS") + ", " + written(POSITION[1]) +
         letter_of(longitude_west, settings, "EW");
}

}  // namespace skypost
