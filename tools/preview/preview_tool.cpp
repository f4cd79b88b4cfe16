#include "preview/preview_tool.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <ostream>

#include "base/process_state.h"
#include "common/report_source.h"
#include "live/data_server.h"
#include "live/report_parser.h"
#include "preview/html.h"
#include "preview/text.h"
#include "run/host_identity.h"
#include "run/last_run.h"
#include "run/rapid_fire.h"

namespace skypost {
namespace {

constexpr char HELP[] =
    "skypost-preview shows what each network would be sent now, and what keeps it from arriving.\n"
    "It sends nothing and changes nothing.\n"
    "\n"
    "  skypost-preview [OPTION...] [NETWORK...]\n"
    "\n"
    "Without NETWORK it shows those that are switched on. A NETWORK is named as windfinder or\n"
    "\"Weather Underground\".\n"
    "\n"
    "  --report FILE    a report of the data server; without it, the data server is asked\n"
    "  --settings FILE  a settings file; without it, the appliance's own\n"
    "  --secrets        passwords are shown, too; without it, they are ***\n"
    "  --html           one page for a browser\n"
    "  --help, --version\n"
    "\n"
    "Exit status: 0; 1 when settings or report cannot be read; 2 for a bad command line.\n";

struct command_line {
  std::optional<std::string> report;
  std::optional<std::string> settings;
  bool with_secrets = false;
  bool as_html = false;
  std::vector<std::string> networks;
};

command_line read_command_line(const std::vector<std::string>& arguments) {
  command_line result;
  for (auto word = arguments.begin(); word != arguments.end(); ++word) {
    const auto take_file = [&] {
      if (word + 1 == arguments.end()) throw usage_error(*word + " takes a FILE");
      return *++word;
    };
    if (*word == "--report")
      result.report = take_file();
    else if (*word == "--settings")
      result.settings = take_file();
    else if (*word == "--secrets")
      result.with_secrets = true;
    else if (*word == "--html")
      result.as_html = true;
    else if (word->starts_with('-'))
      throw usage_error("no option " + *word);
    else
      result.networks.push_back(*word);
  }
  check_networks(result.networks);
  return result;
}

// What start-up does before it asks for the report. Returns the settings file's path.
std::string start_up(const std::optional<std::string>& path) {
  detect_platform();
  read_hardware_address(hardware_address);
  load_endpoints();
  const settings_file file = read_settings_file(path.value_or(appliance_settings_path()));
  station_settings = as_loaded(file);
  make_intervals_valid(station_settings);
  return file.path;
}

std::string written(const moment& now) {
  char text[64];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S %Z", &now.local)};
}

std::string data_server() {
  return std::string("the data server, ") + DATA_SERVER_HOST + ':' + std::to_string(DATA_SERVER_PORT);
}

void show(const command_line& wanted, std::ostream& out) {
  preview_page page;
  page.settings = start_up(wanted.settings);
  page.report = wanted.report.value_or(data_server());
  const std::string report = wanted.report ? read_report(*wanted.report) : fetch_report();
  // Without the step that drops all outdoor values when one of them is missing: the others are shown.
  reset_live_record();
  parse_live_reply(report.c_str());
  const moment now = current_moment();
  page.time = written(now);
  page.steps = make_previews(
      {.from = {station_settings, live_record, now, {std::getenv("NIMBULOGHW"), hardware_address.c_str()}},
       .report = report.c_str(),
       .last_run_age = last_run_age(now.seconds),
       .with_secrets = wanted.with_secrets},
      wanted.networks);
  if (wanted.as_html)
    print_html(out, page);
  else
    print_text(out, page);
}

}  // namespace

int run_preview_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
  const auto is_given = [&](const char* option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
  };
  if (is_given("--help")) {
    out << HELP;
    return 0;
  }
  if (is_given("--version")) {
    out << "skypost-preview " SKYPOST_VERSION "\n";
    return 0;
  }
  try {
    show(read_command_line(arguments), out);
    return 0;
  } catch (const usage_error& fault) {
    errors << "Error: " << fault.what() << " (see skypost-preview --help)\n";
    return 2;
  } catch (const tool_error& fault) {
    errors << "Error: " << fault.what() << '\n';
    return 1;
  }
}

}  // namespace skypost
