#pragma once

#include <string_view>

#include "base/text.h"

// Other programs are started through the shell. These functions quote a text so it arrives unchanged, as one argument.
namespace skypost {

inline constexpr std::size_t COMMAND_CAPACITY = 9'999;
using command_text = fixed_text<COMMAND_CAPACITY>;

// Appends `text` escaped for use inside double quotes: a backslash before `"`, `` ` ``, `$` and `\`.
void append_quoted(text_buffer& command, std::string_view text);

// Appends `text` as one word: bare if it is a plain path, otherwise in double quotes.
void append_shell_word(text_buffer& command, std::string_view text);

}  // namespace skypost
