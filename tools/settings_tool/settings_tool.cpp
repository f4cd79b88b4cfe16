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
  const char* what;  // lines of the help
  int (*run)(const words& arguments, std::ostream& out);
};

constexpr command COMMANDS[] = {
    {"new", "FILE", "      writes the default settings to a new file\n", run_new},
    {"show", "[--secrets] [FILE] [NETWORK]",
     "      prints every setting, group by group, or those of one NETWORK, with * for each password unless\n"
     "      --secrets is given\n",
     run_show},
    {"names", "", "      prints the names of the settings, one a line\n", run_names},
    {"set", "[--force] FILE NAME=VALUE...",
     "      changes settings; when one of them is wrong, the file stays as it was. What fits but cannot be\n"
     "      meant, such as a latitude of 91 degrees, is stored only with --force\n",
     run_set},
    {"sensors", "[--report FILE]",
     "      prints which sensors can be selected for what, with their present values\n", run_sensors},
    {"check", "[--online] [--quiet] [--report FILE] [FILE]",
     "      prints what keeps the uploads from arriving, one finding a line, the worst first. --online also\n"
     "      resolves the names of the servers; --quiet prints nothing. Exit status: 0 nothing was found,\n"
     "      1 something was, 2 the settings or the report cannot be read\n",
     run_check},
};

void print_help(std::ostream& out) {
  out << "skypost-settings makes, shows, changes and checks the settings files of skypost.\n\n";
  for (const command& row : COMMANDS)
    out << "  skypost-settings " << row.name << (*row.arguments == '\0' ? "" : " ") << row.arguments << '\n'
        << row.what;
  out << "  skypost-settings --help | --version\n"
         "\n"
         "Without FILE, `show` and `check` take the appliance's own settings. Without --report, `sensors` "
         "and\n"
         "`check` ask the appliance's data server. The environment variable NIMBULOGHW, when set, names the\n"
         "board that a file belongs to: NSLU2, PLUG, A10 or X86. Otherwise it is taken for this board's.\n";
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
