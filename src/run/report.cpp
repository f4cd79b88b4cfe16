#include "run/report.h"

#include <cstdlib>

#include "base/paths.h"
#include "base/process_state.h"
#include "base/shell.h"

namespace skypost {
namespace {

constexpr char SOURCE_TAG[] = "skypost";

// Room for the longest path and error text with every character of them escaped.
using alarm_command = fixed_text<2 * (PATH_CAPACITY + ERROR_TEXT_CAPACITY + 200) + 100>;

}  // namespace

void report_failure(const char* name) {
  path_text script;
  append_appliance_path(script, ALARM_SCRIPT_PATH);
  alarm_command command;
  append_shell_word(command, script.view());
  command.append(" %s \"", SOURCE_TAG);
  append_quoted(command, name);
  command.append_text("\" \"");
  append_quoted(command, error_text.view());
  command.append_text("\"");
  [[maybe_unused]] const int ignored = std::system(command.c_str());
}

}  // namespace skypost
