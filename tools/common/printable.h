#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// `text` as a terminal shows it literally: each byte of a control character, of a character that changes the
// direction of writing, or of invalid UTF-8 becomes "\x" and two hexadecimal digits. A line break is a control
// character too.
std::string printable(std::string_view text);

// The same in double quotes; those in the text, and its backslashes, are escaped.
std::string quoted(std::string_view text);

// printable() of each line, without its LF or CRLF.
std::vector<std::string> printable_lines(std::string_view text);

}  // namespace skypost
