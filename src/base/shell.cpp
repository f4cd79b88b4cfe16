#include "base/shell.h"

namespace skypost {

void append_quoted(text_buffer& command, std::string_view text) {
  constexpr std::string_view SPECIAL = "\"`$\\";
  for (const char character : text) {
    if (SPECIAL.find(character) != std::string_view::npos) command.append_character('\\');
    command.append_character(character);
  }
}

void append_shell_word(text_buffer& command, std::string_view text) {
  if (!text.empty() && is_alphanumeric(text, "/._-")) {
    command.append_text(text);
    return;
  }
  command.append_character('"');
  append_quoted(command, text);
  command.append_character('"');
}

}  // namespace skypost
