#pragma once

#include <string_view>

#include "base/text.h"

// The program starts other programs through the shell. Whatever a text holds, it reaches the program's
// argument unaltered through these, and the shell interprets nothing in it.
namespace skypost {

// Appends `text` as it has to be between double quotes: `"`, `` ` ``, `$` and `\` get a backslash.
void append_quoted(text_buffer& command, std::string_view text);

// Appends `text` as one word: bare when it is a plain path, in double quotes otherwise.
void append_shell_word(text_buffer& command, std::string_view text);

}  // namespace skypost
