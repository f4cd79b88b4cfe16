#include "compose/record_request.h"

namespace skypost {

void append_record_request(text_buffer& command, endpoint server, const char* path, const char* key,
                           std::span<const numbered_field> table, const station& source, const char* end) {
  begin_get(command, server, path);
  command.append_text(key);
  append_fields(command, table, ";", source, append_url_value);
  command.append_text(end);
  end_get(command);
}

}  // namespace skypost
