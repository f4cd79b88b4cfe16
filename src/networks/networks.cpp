#include "networks/networks.h"

#include "compose/command.h"

namespace skypost {

constinit std::int32_t rapid_fire_flag = 0;

void append_get(text_buffer& command, const http_network& network, const station& source, const char* end) {
  begin_get(command, network.server.in(source.settings), network.path);
  network.append_parameters(command, source);
  command.append_text(end);
}

void append_post(text_buffer& command, const http_network& network, const station& source) {
  begin_post(command);
  command.append_text("--post-data=\"");
  network.append_parameters(command, source);
  command.append_text("\" \"");
  append_url(command, network.server.in(source.settings), network.path);
  command.append_text("\" 2>/dev/stdout");
}

int send_request(const http_network& network) {
  if (rapid_fire_flag != 0 && network.rapid_variant != nullptr)
    return send_request(static_cast<const http_network&>(*network.rapid_variant));
  const std::optional<station> source = current_station();
  if (!source) return 0;
  const endpoint server[] = {network.server.in(source->settings)};
  if (require_endpoints(server) != 0) return -1;
  upload_text command;
  network.compose(command, *source);
  return upload_via_wget(command, network.reply, endpoint_success_text(server[0]));
}

}  // namespace skypost
