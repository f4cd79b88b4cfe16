#include "networks/record_request.h"

namespace skypost {

void append_record_request(text_buffer& command, endpoint server, const char* path, const char* key,
                           std::span<const numbered_field> table, const settings_record& settings,
                           const LiveRecord& live, const moment& now) {
  begin_get(command, server, path);
  command.append_text(key);
  append_fields(command, table, ";", {settings, live, now, append_url_value});
  command.append_text(";");
  end_get(command);
}

}  // namespace skypost
