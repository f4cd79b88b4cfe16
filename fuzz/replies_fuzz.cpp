// Every network's judgement of a reply. The text that it leaves for the owner is one line.

#include "base/process_state.h"
#include "every_network.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  std::string_view input = fuzz::as_text(data, size);
  const http_network& network =
      *EVERY_HTTP_NETWORK[fuzz::take_byte(input) % std::size(EVERY_HTTP_NETWORK)].network;

  reply_text reply;
  reply.append_text(input);
  reply.set_length(std::string_view(reply.c_str()).size());
  error_text.clear();
  const int result = judge_upload(reply, input.size(), network.reply);
  fuzz::require(result == 0 || (result == -1 && !error_text.empty()), "a failure has a text");
  fuzz::require(error_text.view().find_first_of("\r\n") == std::string_view::npos, "the text is one line");
  return 0;
}
