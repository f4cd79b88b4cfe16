// Checks the alarm script. The uploader runs it through sh, and a script that sh cannot run is not reported anywhere.

#include <string_view>

#include "base/paths.h"
#include "common/file_start.h"
#include "common/printable.h"
#include "settings_tool/checks.h"
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

// Returns why the script cannot work as intended, and the remedy; empty if it may. Its interpreter may be on another
// machine.
std::string fault_of_script(const std::string& path, extent at_hand) {
  constexpr char NOBODY[] = "nobody is told of a failed upload. ";
  if (const std::string fault = program_fault(path); !fault.empty())
    return "it cannot be run (" + fault + "), so " + NOBODY + "Put an executable script there.";
  const std::string line = first_line_of(path);
  if (line.starts_with("\177ELF")) return {};
  const std::string interpreter = interpreter_in(line);
  if (line.ends_with('\r'))
    return "its lines end in CR LF, so " +
           (interpreter.empty() ? "sh takes each CR for a part of the command. "
                                : "it cannot be run and " + std::string(NOBODY)) +
           "Remove each CR: sed -i 's/\\r$//' " + path;
  if (interpreter.empty())
    return "its first line does not begin with \"#!\", so sh runs it, whatever language it is in. Begin it"
           " with \"#!/bin/sh\", or with the program that it is written for.";
  if (at_hand < extent::machine) return {};
  if (const std::string fault = program_fault(interpreter); !fault.empty())
    return "its first line names " + quoted(interpreter) + ", which cannot be run (" + fault + "), so " +
           NOBODY + "Name a program that is there, such as \"#!/bin/sh\".";
  return {};
}

}  // namespace

void check_alarm_script(const checked_appliance& appliance, findings& found) {
  const std::string path = appliance_path(ALARM_SCRIPT_PATH);
  const std::string fault = fault_of_script(path, appliance.at_hand);
  if (!fault.empty()) found.push_back(path + ": " + fault);
}

}  // namespace skypost
