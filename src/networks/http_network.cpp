#include "networks/http_network.h"

#include "base/process_state.h"
#include "transport/command.h"

namespace skypost {

int upload_to(const http_network& network) {
  if (flags.live_data_stale != 0) return 0;
  command_text command;
  network.compose(command, station_settings, live_record, current_moment());
  return upload_via_wget(command, network.reply);
}

}  // namespace skypost
