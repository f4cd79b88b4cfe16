#pragma once

#include <string_view>

#include "base/text.h"

// The program starts other programs through the shell. Whatever a text holds, these let it reach
// the program's argument unaltered and keep it from being interpreted on the way.
namespace skypost {

// Appends `text` as it must stand between double quotes: `"`, `` ` ``, `$` and `\` get a backslash.
void append_quoted(text_buffer& command, std::string_view text);

// Appends `text` as one word of its own: bare when it is a plain path, in double quotes otherwise.
void append_shell_word(text_buffer& command, std::string_view text);

}  // namespace skypost
