// A good upload judged bad alarms the owner for nothing; a bad one judged good goes unnoticed for weeks. One network is
// tested for each way of judging; golden/replies lists the way of every network. The end-to-end tests have the plainest
// replies.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "base/debug.h"
#include "base/error_text.h"
#include "endpoints/endpoints.h"
#include "networks/networks.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

std::string with_escapes(std::string text) {
  text = replaced(replaced(text, "\r", "\\r"), "\n", "\\n");
  return replaced(replaced(text, {'\0'}, "\\0"), "\xE9", "\\xE9");
}

constexpr char OF_ANOTHER[] = "left by another network";

// A failure must replace the error text of another network; a success must leave it. So it must in debug mode.
std::string judged(const http_network& network, const std::string& text) {
  std::string judgement;
  for (const std::int32_t debug : {0, 1}) {
    reply_text reply;
    reply.append_text(text);
    reply.set_length(std::strlen(reply.c_str()));
    error_text.clear();
    error_text.append_text(OF_ANOTHER);
    debug_flag = debug;
    ::testing::internal::CaptureStderr();
    const int result = judge_upload(reply, text.size(), network.reply, NO_WGET_STATUS,
                                    endpoint_success_text(network.server.in(station_settings)));
    debug_flag = 0;
    const std::string output = ::testing::internal::GetCapturedStderr();
    std::string found = result == 0 ? "good" : "bad";
    if (result != 0 || error_text.view() != OF_ANOTHER) found += std::string(": ") + error_text.c_str();
    if (debug != 0 && found != judgement) judgement += ", in debug mode " + found;
    if (debug == 0) judgement = found;
    if (!output.empty()) judgement += (debug == 0 ? "; prints " : "; debug: ") + with_escapes(output);
  }
  return judgement;
}

// Each case is a network and a reply. "endpoints:" begins a line of the endpoint file: in later replies its success
// text is accepted besides the network's own.
TEST(ReplyJudgement, IsTheSameWithAndWithoutDebugOutput) {
  expect_cases("networks/golden/judged_replies", [](const std::string& one) -> std::string {
    const std::string id = one.substr(0, one.find(' '));
    const std::string rest = without_escapes(one.substr(std::min(id.size() + 1, one.size())));
    if (id == "endpoints:") {
      reset_endpoints();
      return read_endpoint_lines(rest);
    }
    for (const upload* const what : every_upload())
      if (what->id == id) return judged(static_cast<const http_network&>(*what), rest);
    return "no such network";
  });
  reset_endpoints();
}

}  // namespace
}  // namespace skypost::testing
