// Checks wget, the certificates that it trusts and its proxy.

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "base/paths.h"
#include "base/shell.h"
#include "common/command_output.h"
#include "common/composing.h"
#include "common/file_start.h"
#include "common/network_faults.h"
#include "common/printable.h"
#include "common/request_parts.h"
#include "networks/networks.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled.h"
#include "settings_tool/program_fault.h"
#include "settings_tool/wget_settings.h"

namespace skypost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t LONGEST_FILE = 100'000;

// What a program prints for --version.
std::string version_text(const std::string& program) {
  fixed_text<2 * PATH_CAPACITY + 40> command;
  append_shell_word(command, program);
  command.append_text(" --version 2>/dev/null");
  return output_of(command.c_str());
}

// Other versions of wget, such as busybox's, have no login options and do not encode spaces in URLs.
bool needs_gnu_wget(const handed_out& one) {
  if (one.upload.by != carrier::http) return false;
  const std::vector<std::string> command = shell_words(text_of(one.upload, station_without_values()));
  return std::any_of(command.begin(), command.end(), [](std::string_view word) {
    return word.starts_with("--http-user=") ||
           (word.starts_with("http") && word.find("://") != word.npos && word.find(' ') != word.npos);
  });
}

// "uploads to MeteoNews, WeatherBug fail, and ". AnythingWeather's reply is judged by a status line of GNU Wget.
std::string failures_without_gnu_wget() {
  const std::string failing = networks_where(
      [](const handed_out& one) { return needs_gnu_wget(one) || &one.upload == &ANYTHINGWEATHER; });
  return failing.empty() ? "" : "uploads to " + failing + " fail, and ";
}

std::string networks_with(const std::string& scheme, bool certificate_checked = false) {
  return networks_where([&](const handed_out& one) {
    for (const called_server& server : servers_of(one, station_without_values()))
      if (server.scheme == scheme && (server.is_certificate_checked || !certificate_checked)) return true;
    return false;
  });
}

bool holds_certificate(const std::string& file) {
  const std::string text = file_start(file, LONGEST_FILE);
  return text.find("-----BEGIN CERTIFICATE-----") != std::string::npos ||
         text.find("-----BEGIN TRUSTED CERTIFICATE-----") != std::string::npos;
}

// Reads the files: links to removed certificates may be left.
bool is_certificate_in(const std::string& directory) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(directory, ignored))
    if (holds_certificate(entry.path())) return true;
  return false;
}

std::string setting_in(const std::string& file, const std::string& name) {
  constexpr char BLANKS[] = " \t\r";
  std::istringstream lines(file_start(file, LONGEST_FILE));
  std::string value;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos || !is_same_name(line.substr(0, equals), name)) continue;
    const std::size_t start = line.find_first_not_of(BLANKS, equals + 1);
    value = start == std::string::npos ? "" : line.substr(start, line.find_last_not_of(BLANKS) + 1 - start);
  }
  return value;
}

constexpr const char* WGET_SETTINGS_PATHS[] = {WGET_SETTINGS_PATH, "/etc/wgetrc"};

}  // namespace

std::string wget_setting(const std::string& name) {
  for (const char* const path : WGET_SETTINGS_PATHS)
    if (const std::string value = setting_in(appliance_path(path), name); !value.empty()) return value;
  return {};
}

wget_proxy proxy_for(const std::string& scheme) {
  const std::string name = scheme + "_proxy";
  if (scheme.empty() || wget_setting("use_proxy") == "off") return {};
  wget_proxy proxy;
  const char* const variable = std::getenv(name.c_str());
  if (variable != nullptr) proxy = {variable, name + " in the environment"};
  for (const char* const path : WGET_SETTINGS_PATHS)
    if (const std::string value = setting_in(appliance_path(path), name); !value.empty()) {
      proxy = {value, name + " in " + appliance_path(path)};
      break;
    }
  proxy.address.erase(0, proxy.address.rfind('@') + 1);
  return proxy;
}

void check_wget(const checked_appliance& appliance, findings& found) {
  const std::string all = networks_by(carrier::http);
  if (all.empty()) return;
  if (const std::string fault = program_fault(appliance.wget); !fault.empty()) {
    found.push_back(appliance.wget + ": it cannot be run (" + fault + "), so nothing is sent to " + all +
                    ". Install GNU Wget there: apt install wget");
    return;
  }
  const std::string version = version_text(appliance.wget);
  if (version.find("GNU Wget") == std::string::npos) {
    found.push_back(appliance.wget + ": it is not GNU Wget, so " + failures_without_gnu_wget() +
                    "wgetrc has no effect. Install GNU Wget there: apt install wget");
    return;
  }
  const std::string secured = networks_with("https");
  if (!secured.empty() && version.find("+https") == std::string::npos)
    found.push_back(appliance.wget + ": it does not support https, so nothing is sent to " + secured +
                    ". Install a wget there whose --version names \"+https\".");
}

void check_certificates(const checked_appliance& appliance, findings& found) {
  const std::string networks = networks_with("https", true);
  if (networks.empty() || wget_setting("check_certificate") == "off") return;
  const std::string owners = wget_setting("ca_directory");
  const std::string directory = owners.empty() ? appliance.certificates : owners;
  if (is_certificate_in(directory) || holds_certificate(wget_setting("ca_certificate"))) return;
  found.push_back(directory +
                  ": it holds no certificate, so wget trusts no https server and nothing is sent to " +
                  networks + ". " +
                  (owners.empty() ? "Install the usual ones: apt install ca-certificates"
                                  : "Correct ca_directory in " + appliance_path(WGET_SETTINGS_PATH) + '.'));
}

void check_proxy(const checked_appliance&, findings& found) {
  for (const char* const scheme : {"http", "https"}) {
    const wget_proxy proxy = proxy_for(scheme);
    const std::string networks = networks_with(scheme);
    if (proxy.address.empty() || networks.empty()) continue;
    const bool is_variable = proxy.named_by.ends_with(" in the environment");
    found.push_back(proxy.named_by + ": " + (is_variable ? "what you try here is sent" : "uploads are sent") +
                    " to " + networks + " through the proxy " + skypost::quoted(proxy.address) +
                    (is_variable ? ", but runs that systemd or cron starts do not have this variable. Set it"
                                   " in " +
                                       appliance_path(WGET_SETTINGS_PATH) + " instead, or unset it."
                                 : ", which must be there, and may read them. Remove the line unless you want"
                                   " that."));
  }
}

}  // namespace skypost
