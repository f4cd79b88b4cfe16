#include "networks/networks.h"

namespace skypost {

constinit std::int32_t rapid_fire_flag = 0;

int upload_to(const http_network& network) {
  const std::optional<station> source = current_station();
  if (!source) return 0;
  outgoing_text command;
  network.compose(command, *source);
  return upload_via_wget(command, network.reply);
}

}  // namespace skypost
