// Fuzzes each network's judgement of a reply. The failure text must be one line.

#include <vector>

#include "base/error_text.h"
#include "harness.h"
#include "networks/networks.h"
#include "run/run_list.h"

namespace {

std::vector<const skypost::http_network*> every_network() {
  std::vector<const skypost::http_network*> networks;
  skypost::for_each_upload([&](const skypost::upload& upload) {
    if (upload.by == skypost::carrier::http)
      networks.push_back(static_cast<const skypost::http_network*>(&upload));
  });
  return networks;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  std::string_view input = fuzz::as_text(data, size);
  static const std::vector<const http_network*> networks = every_network();
  const http_network& network = *networks[fuzz::take_byte(input) % networks.size()];

  reply_text reply;
  reply.append_text(input);
  reply.set_length(std::string_view(reply.c_str()).size());
  error_text.clear();
  const int result = judge_upload(reply, input.size(), network.reply, NO_WGET_STATUS);
  fuzz::require(result == 0 || (result == -1 && !error_text.empty()), "a failure has a text");
  fuzz::require(error_text.view().find_first_of("\r\n") == std::string_view::npos, "the text is one line");
  return 0;
}
