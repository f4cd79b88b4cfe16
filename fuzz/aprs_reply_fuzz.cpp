// Fuzzes an APRS server's reply through a whole session. The session's socket is one end of a pair; the other end has
// sent the input and closed.

#include <sys/socket.h>
#include <unistd.h>

#include "base/error_text.h"
#include "channels/channels.h"
#include "harness.h"

namespace {

std::string_view reply;
int other_end = -1;

}  // namespace

extern "C" int socket(int, int, int) {
  int ends[2];
  skypost::fuzz::require(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0, "socketpair");
  if (other_end >= 0) close(other_end);
  other_end = ends[1];
  skypost::fuzz::require(write(other_end, reply.data(), reply.size()) >= 0, "write");
  shutdown(other_end, SHUT_WR);
  return ends[0];
}

extern "C" int connect(int, const sockaddr*, socklen_t) { return 0; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace skypost;
  reply = fuzz::as_text(data, size < 2'000 ? size : 2'000);
  aprs_pauses = {0, 0};
  error_text.clear();
  const char* const servers[] = {"127.0.0.1", nullptr};
  const int result = aprs_session(servers, 14'580, "N0CALL", -1, true);
  // The session reads once, at most 1,000 bytes, up to a NUL.
  std::string_view heard = head_of(reply, 1'000);
  heard = head_of(heard, heard.find('\0'));
  const bool is_named = heard.find("N0CALL") != std::string_view::npos;
  fuzz::require((result == 0) == is_named, "the call sign decides");
  fuzz::require(result != 0 || error_text.empty(), "a success leaves no text");
  fuzz::require(error_text.view().find('\n') == std::string_view::npos, "one line");
  return 0;
}
