// Checks that wget has certificates with which it can trust https servers.

#include <filesystem>
#include <sstream>
#include <string_view>

#include "base/paths.h"
#include "common/composing.h"
#include "common/file_start.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"

namespace skypost {
namespace {

namespace fs = std::filesystem;

// Returns a setting from the appliance's wgetrc file; empty if it is not set. The last line that sets it counts.
std::string wget_setting(std::string_view name) {
  constexpr char BLANKS[] = " \t\r";
  std::istringstream lines(file_start(appliance_path(WGET_SETTINGS_PATH), 100'000));
  std::string value;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos || !is_same_name(line.substr(0, equals), name)) continue;
    const std::size_t start = line.find_first_not_of(BLANKS, equals + 1);
    value = start == std::string::npos ? "" : line.substr(start, line.find_last_not_of(BLANKS) + 1 - start);
  }
  return value;
}

bool holds_certificate(const std::string& file) {
  const std::string text = file_start(file, 100'000);
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

// Only MeteoNews' certificate is not checked.
bool is_certificate_checked(const run_step& step) {
  for (const called_server& server : servers_of(step))
    if (server.scheme == "https")
      return text_of(*step.upload, station_without_values("")).find(" --no-check-certificate ") ==
             std::string::npos;
  return false;
}

}  // namespace

void check_certificates(const checked_appliance& appliance, findings& found) {
  const std::string networks = networks_where(is_certificate_checked);
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

}  // namespace skypost
