#include "run/failure.h"

#include <cstdlib>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/shell.h"

namespace skypost {
namespace {

constexpr char SOURCE_TAG[] = "skypost";

// Room for path, name and error text of maximum length, fully escaped, and the separators.
using alarm_command =
    fixed_text<2 * (PATH_CAPACITY + FAILURE_NAME_CAPACITY + ERROR_TEXT_CAPACITY) + sizeof SOURCE_TAG + 8>;

}  // namespace

void report_failure(failure_name name) {
  const path_text script(ALARM_SCRIPT_PATH);
  alarm_command command;
  append_shell_word(command, script.view());
  command.append(" %s \"", SOURCE_TAG);
  append_quoted(command, name.text);
  command.append_text("\" \"");
  append_quoted(command, error_text.view());
  command.append_text("\"");
  // A truncated command would end inside a quote.
  if (command.was_cut()) return;
  [[maybe_unused]] const int ignored = std::system(command.c_str());
}

}  // namespace skypost
