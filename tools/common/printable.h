#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// Makes `text` safe to print on a terminal: each byte of a control character (including line breaks), of a character
// that changes the writing direction, or of invalid UTF-8 becomes "\x" and two hexadecimal digits.
std::string printable(std::string_view text);

// printable() in double quotes, with the quotes and backslashes in `text` escaped.
std::string quoted(std::string_view text);

// printable() of each line, without its LF or CRLF.
std::vector<std::string> printable_lines(std::string_view text);

}  // namespace skypost
