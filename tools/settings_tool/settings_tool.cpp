#include "settings_tool/settings_tool.h"

#include <ostream>

#include "common/errors.h"
#include "common/printable.h"
#include "common/similar_name.h"
#include "settings_tool/commands.h"

namespace skypost {
namespace {

struct command {
  const char* name;
  const char* arguments;
  const char* help;
  int (*run)(const words& arguments, std::ostream& out);
};

constexpr command COMMANDS[] = {
    {"new", "FILE", "      writes the default settings to a new file\n", run_new},
    {"show", "[--secrets] [FILE] [NETWORK]",
     "      prints every setting, group by group, or those of one NETWORK, with * for each password unless\n"
     "      --secrets is given\n",
     run_show},
    {"names", "", "      prints the names of the settings, one per line\n", run_names},
    {"set", "[--force] FILE NAME[=VALUE]...",
     "      changes settings; if one of them is wrong, the file is left unchanged. Asks for a password that\n"
     "      has no =VALUE. Implausible values, such as a latitude of 91 degrees, are stored only with "
     "--force\n",
     run_set},
    {"sensors", "[--report FILE]",
     "      prints which sensors can be selected for what, with their current values\n", run_sensors},
    {"check", "[--board] [--online] [--quiet] [--report FILE] [FILE]",
     "      lists problems that prevent uploads, one per line, most serious first. --board is for files "
     "that\n"
     "      were copied from a board: this machine itself is not checked. --online also connects to the\n"
     "      servers, without sending a value; --quiet prints nothing. Exit status: 0 if nothing was found,\n"
     "      1 if something was, 2 if the settings or the report cannot be read\n",
     run_check},
    {"try", "[--yes] NETWORK",
     "      makes one real upload to NETWORK, even if it is disabled, and prints the result. Asks for\n"
     "      confirmation unless --yes is given. Exit status: 0 if it was accepted\n",
     run_try},
};

void print_help(std::ostream& out) {
  out << "skypost-settings creates, shows, changes, checks and tries the settings of skypost.\n\n";
  for (const command& row : COMMANDS)
    out << "  skypost-settings " << row.name << (*row.arguments == '\0' ? "" : " ") << row.arguments << '\n'
        << row.help;
  out << "  skypost-settings --help | --version\n"
         "\n"
         "show and check use the appliance's settings unless FILE is given, and sensors and check query its\n"
         "data server unless --report is given; try always uses both. The environment variable NIMBULOGHW\n"
         "names the kind of board that wrote the file (NSLU2, PLUG, A10 or X86); otherwise this machine's\n"
         "kind is assumed.\n";
}

int run_command(const words& arguments, std::ostream& out) {
  if (arguments.empty()) throw usage_error("no command given");
  for (const command& row : COMMANDS)
    if (arguments[0] == row.name) return row.run({arguments.begin() + 1, arguments.end()}, out);
  std::vector<std::string> names;
  for (const command& row : COMMANDS) names.emplace_back(row.name);
  throw usage_error("no command " + quoted(arguments[0]) + suggestion_for(arguments[0], names));
}

}  // namespace

const tool SETTINGS_TOOL = {"skypost-settings", print_help, run_command};

}  // namespace skypost
