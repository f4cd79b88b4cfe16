#include "preview/preview_tool.h"

#include <ctime>
#include <optional>
#include <ostream>

#include "base/board.h"
#include "common/errors.h"
#include "common/kept_text.h"
#include "common/networks.h"
#include "common/report_source.h"
#include "common/settings_file.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "live/data_server.h"
#include "live/report_parser.h"
#include "preview/html.h"
#include "preview/text.h"
#include "run/last_run.h"
#include "run/rapid_fire.h"
#include "run/run_list.h"

namespace skypost {
namespace {

constexpr char HELP[] =
    "skypost-preview shows what each network would be sent now, and what keeps it from arriving.\n"
    "It sends nothing and changes nothing.\n"
    "\n"
    "  skypost-preview [OPTION...] [NETWORK...]\n"
    "\n"
    "Without NETWORK it shows those that are switched on. A NETWORK is a name such as windfinder or\n"
    "\"Weather Underground\".\n"
    "\n"
    "  --report FILE    read the report from FILE instead of the data server\n"
    "  --settings FILE  read the settings from FILE instead of the appliance's own\n"
    "  --secrets        show passwords instead of ***\n"
    "  --html           print one page for a browser\n"
    "\n"
    "  skypost-preview --names             prints every NETWORK, one per line\n"
    "  skypost-preview --help | --version\n"
    "\n"
    "Exit status: 0; 1 if settings or report cannot be read; 2 for an invalid command line.\n";

struct command_line {
  bool with_secrets;
  bool as_html;
  std::optional<std::string> report;
  std::optional<std::string> settings;
  words networks;
};

command_line read_command_line(words arguments) {
  command_line result{
      .with_secrets = take_option(arguments, "--secrets"),
      .as_html = take_option(arguments, "--html"),
      .report = take_file_option(arguments, "--report"),
      .settings = take_file_option(arguments, "--settings"),
      .networks = {},
  };
  result.networks = operands(arguments);
  check_networks(result.networks);
  return result;
}

// Loads the endpoint file and adds its errors to `warnings`.
void load_endpoints_into(std::vector<std::string>& warnings) {
  kept_text errors;
  load_endpoints(errors.stream());
  for (const std::string& fault : endpoint_faults(errors.text())) warnings.push_back(fault + '.');
}

// Loads what the uploader loads before it asks for the report.
void start_up(preview_page& page) {
  kept_text ignored;  // previews that need the address warn of it
  read_hardware_address(hardware_address, ignored.stream());
  load_endpoints_into(page.warnings);
  const settings_file file = read_settings_file(page.settings);
  station_settings = as_loaded(file);
  make_intervals_valid(station_settings);
  for (const std::string& fault : faults_of_layout(file)) page.warnings.push_back(fault);
}

std::string report_for(const command_line& wanted) {
  if (wanted.report) return read_report(*wanted.report);
  try {
    return fetch_report();
  } catch (const tool_error& fault) {
    throw tool_error(std::string(fault.what()) + "; use --report FILE to read one");
  }
}

std::string written(const moment& now) {
  char text[64];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S %Z", &now.local)};
}

std::string data_server() {
  return std::string("the data server, ") + DATA_SERVER_HOST + ':' + std::to_string(DATA_SERVER_PORT);
}

void fill(preview_page& page, const command_line& wanted) {
  page.settings = wanted.settings.value_or(appliance_settings_path());
  page.report = wanted.report.value_or(data_server());
  const moment now = current_moment();
  page.time = written(now);
  start_up(page);
  const std::string report = report_for(wanted);
  // load_live_record() would drop all outdoor values if one of them is missing, but the preview shows the others.
  reset_live_record(live_record);
  parse_live_reply(report.c_str(), station_settings, live_record);
  page.steps =
      make_previews({.source = {station_settings, live_record, now, {platform(), hardware_address.c_str()}},
                     .report = report.c_str(),
                     .last_run_age = last_run_age(now.seconds),
                     .with_secrets = wanted.with_secrets},
                    wanted.networks);
}

// A page says why it is empty, since whoever looks at it does not see the error.
void show(const command_line& wanted, std::ostream& out) {
  preview_page page;
  try {
    fill(page, wanted);
  } catch (const tool_error& fault) {
    page.fault = fault.what();
    if (wanted.as_html) print_html(out, page);
    throw;
  }
  if (wanted.as_html)
    print_html(out, page);
  else
    print_text(out, page);
}

int run(const words& arguments, std::ostream& out) {
  if (arguments == words{"--names"})
    for_each_upload([&](const upload& upload) { out << upload.id << '\n'; });
  else
    show(read_command_line(arguments), out);
  return 0;
}

void print_help(std::ostream& out) { out << HELP; }

}  // namespace

const tool PREVIEW_TOOL = {"skypost-preview", print_help, run};

}  // namespace skypost
