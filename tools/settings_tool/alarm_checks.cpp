// Checks the alarm script. The uploader runs it through sh, and a script that sh cannot run is not reported anywhere.

#include <string_view>

#include "base/paths.h"
#include "base/shell.h"
#include "common/command_output.h"
#include "common/file_start.h"
#include "common/printable.h"
#include "settings_tool/checks.h"
#include "settings_tool/chosen_file.h"
#include "settings_tool/program_fault.h"

namespace skypost {
namespace {

// Returns at most the 256 bytes that the kernel reads.
std::string first_line_of(const std::string& path) {
  const std::string text = file_start(path, 256);
  return text.substr(0, text.find('\n'));
}

// Returns the interpreter that a "#!" line names; empty if it names none.
std::string interpreter_in(std::string_view line) {
  constexpr char BLANKS[] = " \t";
  if (!line.starts_with("#!")) return {};
  line.remove_prefix(std::min(line.find_first_not_of(BLANKS, 2), line.size()));
  return std::string(line.substr(0, line.find_first_of(BLANKS)));
}

// What a shell says of the script without running it.
std::string syntax_fault(const std::string& shell, const std::string& path) {
  fixed_text<4 * PATH_CAPACITY + 40> command;
  append_shell_word(command, shell);
  command.append_text(" -n ");
  append_shell_word(command, path);
  command.append_text(" 2>&1");
  const std::string text = output_of(command.c_str());
  return text.substr(0, text.find('\n'));
}

// Returns why the script cannot work as intended, and the remedy; empty if it may. Its interpreter may be on another
// machine.
std::string fault_of_script(const std::string& path, extent at_hand) {
  const std::string NOBODY = ", so it hears of no failure. ";
  if (!is_there(path))
    return "there is none, so single failures are not passed on; skypost-status shows them all.";
  if (const std::string fault = program_fault(path); !fault.empty())
    return "it cannot be run (" + fault + ")" + NOBODY + "Put an executable script there.";
  const std::string line = first_line_of(path);
  if (line.starts_with("\177ELF")) return {};
  if (line.ends_with('\r'))
    return "its lines end in CR LF, which no shell understands" + NOBODY +
           "Remove each CR: sed -i 's/\\r$//' " + path;
  const std::string interpreter = interpreter_in(line);
  if (interpreter.empty())
    return "it has no \"#!\" line, so sh runs it. Add \"#!/bin/sh\", or the interpreter that it needs.";
  if (at_hand < extent::machine) return {};
  if (const std::string fault = program_fault(interpreter); !fault.empty())
    return "its first line names " + quoted(interpreter) + ", which cannot be run (" + fault + ")" + NOBODY +
           "Name a program that is there, such as \"#!/bin/sh\".";
  if (!interpreter.ends_with("sh")) return {};
  const std::string fault = syntax_fault(interpreter, path);
  return fault.empty() ? "" : "it cannot be run (" + fault + ")" + NOBODY + "Correct it.";
}

}  // namespace

void check_alarm_script(const checked_appliance& appliance, findings& found) {
  const std::string path = appliance_path(ALARM_SCRIPT_PATH);
  const std::string fault = fault_of_script(path, appliance.at_hand);
  if (!fault.empty()) found.push_back(path + ": " + fault);
}

}  // namespace skypost
