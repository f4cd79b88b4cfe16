#pragma once

#include <functional>
#include <string>

namespace skypost::testing {

// Returns the content of the file; fails the test if there is none.
std::string read_whole_file(const std::string& path);

// Replaces every `from` by `to`.
std::string replaced(std::string text, const std::string& from, const std::string& to);

// Decodes \n, \r, \t, \0, \e, \xHH, and "<3 a>" as "aaa"; leaves any other backslash alone.
std::string without_escapes(std::string text);

// Compares the text with the golden text tests/`name`. If that is missing or different, fails with the difference (the
// golden text's lines with -, the new ones with +) and writes the text to composed/`name` in the build directory.
// Otherwise removes that file. Check it before you copy it to tests/.
void expect_golden(const std::string& name, const std::string& text);

// Replays lines of the form "CASE => RESULT": passes each case to `run`, which returns the result. More lines of a result
// begin with four blanks; a case without a result has no arrow. Lines that begin with # are comments.
void expect_cases(const std::string& name, const std::function<std::string(const std::string& one)>& run);

// Replays a golden session: passes each line that starts with "# ", "+ " or "$" to `run`, which returns the lines
// that must follow it. A "# " begins a case.
void expect_session(const std::string& name, const std::function<std::string(const std::string& line)>& run);

}  // namespace skypost::testing
