#include "networks/networks.h"

#include "base/process_state.h"

namespace skypost {

int upload_to(const http_network& network) {
  const std::optional<station> from = current_station();
  if (!from) return 0;
  const bool is_rapid = flags.rapid_fire_flag != 0 && network.rapid_form != nullptr;
  const http_network& form = is_rapid ? *network.rapid_form : network;
  outgoing_text command;
  form.compose(command, *from);
  return upload_via_wget(command, form.reply);
}

}  // namespace skypost
