#include "compose/command.h"

namespace skypost {

void append_url(text_buffer& command, endpoint server, const char* path) {
  const std::string_view url = endpoint_value(server);
  command.append_text(url);
  if (path_in(url).empty()) command.append_text(path);
}

void begin_get(text_buffer& command, endpoint server, const char* path) {
  command.append("%s -t %d -q -O /dev/stdout \"", WGET_COMMAND, WGET_TRIES);
  append_url(command, server, path);
  command.append_character('?');
}

void begin_post(text_buffer& command) {
  command.append("%s -t %d -O /dev/stdout ", WGET_COMMAND, WGET_TRIES);
}

void append_url_value(text_buffer& command, std::string_view value) {
  for (const char& character : value) {
    if (character == '&')
      command.append_text("%26");
    else if (character == '#')
      command.append_text("%23");
    else
      append_quoted(command, {&character, 1});
  }
}

void append_parameter(text_buffer& command, const char* key, std::string_view value) {
  command.append_text(key);
  append_url_value(command, value);
}

}  // namespace skypost
