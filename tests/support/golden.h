#pragma once

#include <functional>
#include <string>

namespace skypost::testing {

// The whole file; fails the test if it cannot be read.
std::string read_whole_file(const std::string& path);

// Every `from` becomes `to`.
std::string replaced(std::string text, const std::string& from, const std::string& to);

// Every \n, \r, \t, \0, \e and \xHH becomes the byte that it stands for; any other backslash stays.
std::string without_escapes(std::string text);

// Compares with the golden text tests/`name`. If that is missing or different, the text is left under that name
// in the build directory's composed/; once it has been checked, it belongs in tests/.
void expect_golden(const std::string& name, const std::string& text);

// Replays a golden text that reads like a session: `run` gets each line that starts with "# ", "+ " or "$" and
// returns what must follow it. A "# " begins a case.
void expect_session(const std::string& name, const std::function<std::string(const std::string& line)>& run);

}  // namespace skypost::testing
