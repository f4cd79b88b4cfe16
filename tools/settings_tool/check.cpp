#include <unistd.h>

#include <ctime>
#include <ostream>

#include "base/board.h"
#include "common/command_output.h"
#include "common/errors.h"
#include "common/kept_text.h"
#include "common/printable.h"
#include "common/report_source.h"
#include "compose/command.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "settings_tool/checks.h"
#include "settings_tool/chosen_file.h"
#include "settings_tool/commands.h"

namespace skypost {
namespace {

// Empty if systemd is not running or does not answer.
std::string state_of(const std::string& unit) {
  if (!is_there(appliance_path("/run/systemd/system"))) return {};
  return output_of(("systemctl show --property=ActiveState,UnitFileState " + unit + " 2>/dev/null").c_str());
}

// Reads what the uploader reads at start-up.
checked_appliance read_appliance(const words& arguments) {
  checked_appliance appliance{};
  appliance.file = read_chosen_file(arguments);
  station_settings = as_loaded(appliance.file);

  kept_text errors;
  load_endpoints(errors.stream());
  appliance.endpoint_errors = errors.text();

  fixed_text<32> address;
  kept_text ignored;
  read_hardware_address(address, ignored.stream());
  appliance.hardware_address = address.c_str();

  const std::string_view wget = WGET_COMMAND;
  appliance.wget = wget.substr(0, wget.find(' '));
  appliance.certificates = "/etc/ssl/certs";
  appliance.timer = state_of("skypost.timer");
  appliance.rapid_service = state_of("skypost-rapid.service");
  appliance.now = std::time(nullptr);
  appliance.built = SKYPOST_BUILD_DATE;
  return appliance;
}

// True if the appliance's files are below a directory of their own.
bool has_root() { return !appliance_path("").empty(); }

// Without a report from the data server the check goes on; a file that cannot be read ends it.
void read_report_into(checked_appliance& appliance, const std::optional<std::string>& path, bool quiet) {
  if (path) {
    appliance.report = read_report(*path);
    return;
  }
  try {
    appliance.report = fetch_report(quiet);
  } catch (const tool_error& fault) {
    appliance.report_fault = fault.what();
  }
}

}  // namespace

int run_check(const words& all_arguments, std::ostream& out) {
  words arguments = all_arguments;
  const bool is_elsewhere = take_option(arguments, "--board");
  const bool online = take_option(arguments, "--online");
  const bool quiet = take_option(arguments, "--quiet");
  const std::optional<std::string> report_path = take_file_option(arguments, "--report");
  arguments = operands(arguments);
  if (arguments.size() > 1) throw usage_error("check takes at most one FILE");

  checked_appliance appliance;
  try {
    appliance = read_appliance(arguments);
    if (is_elsewhere) appliance.at_hand = has_root() ? extent::files : extent::settings;
    if (!is_elsewhere || report_path) read_report_into(appliance, report_path, quiet);
  } catch (const tool_error& fault) {
    if (quiet) return 2;
    throw tool_error(fault.what(), 2);
  }
  appliance.online = online;
  if (online && !quiet && isatty(STDERR_FILENO) != 0)
    std::fputs("Connecting to the networks' servers ...\n", stderr);
  const findings found = findings_of(appliance);
  if (!quiet) {
    for (const std::string& finding : found) out << printable(finding) << '\n';
    if (found.empty()) out << "Nothing wrong found.\n";
  }
  return found.empty() ? 0 : 1;
}

}  // namespace skypost
