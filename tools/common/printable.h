#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace skypost {

// `text` without anything that a terminal would obey and without bytes that are not UTF-8: each such byte
// becomes "\x" and its two hexadecimal digits. A line break is such a byte too.
std::string printable(std::string_view text);

// The same between quotation marks; those in the text, and its backslashes, have a backslash before them.
std::string quoted(std::string_view text);

// The first, of each line of a text, without the line's end: a line feed, or a carriage return and a line feed.
std::vector<std::string> printable_lines(std::string_view text);

}  // namespace skypost
