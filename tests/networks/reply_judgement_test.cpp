// How each network's replies are judged: a good upload judged bad alarms the owner for nothing, a bad one judged good
// goes unnoticed for weeks. Networks judged alike are represented by one per way of reading; golden/replies has the word
// and the way of each. The plainest replies, the empty one among them, are in the end-to-end tests.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>

#include "base/debug.h"
#include "base/endpoints.h"
#include "base/error_text.h"
#include "networks/networks.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

std::string with_escapes(std::string text) {
  text = replaced(replaced(text, "\r", "\\r"), "\n", "\\n");
  return replaced(replaced(text, {'\0'}, "\\0"), "\xE9", "\\xE9");
}

std::string without_escapes(std::string text) {
  text = replaced(replaced(text, "\\r", "\r"), "\\n", "\n");
  return replaced(replaced(text, "\\0", {'\0'}), "\\xE9", "\xE9");
}

// A failure replaces what another network has left; a success leaves it.
std::string judged(const http_network& network, const std::string& text) {
  std::string judgement;
  for (const std::int32_t debug : {0, 1}) {
    reply_text reply;
    reply.append_text(text);
    reply.set_length(std::strlen(reply.c_str()));
    error_text.clear();
    error_text.append_text("left by another network");
    debug_flag = debug;
    ::testing::internal::CaptureStderr();
    const int result = judge_upload(reply, text.size(), network.reply);
    debug_flag = 0;
    const std::string output = ::testing::internal::GetCapturedStderr();
    const std::string found =
        "    result: " + std::to_string(result) + "\n    error:  " + error_text.c_str() + '\n';
    if (debug == 0) {
      EXPECT_EQ(output, "");
      judgement = found;
    } else {
      EXPECT_EQ(judgement, found);
      judgement += "    debug:  " + with_escapes(output) + '\n';
    }
  }
  return judgement;
}

// Each line of the golden text has a network and a reply, and after it the judgement.
TEST(ReplyJudgement, IsTheSameWithAndWithoutDebugOutput) {
  std::istringstream lines(read_whole_file(TESTS_DIRECTORY "/networks/golden/judged_replies"));
  std::string found;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("    ")) continue;
    found += line + '\n';
    const std::string id = line.substr(0, line.find(' '));
    const std::string reply = id == line ? "" : without_escapes(line.substr(id.size() + 1));
    for (const outgoing* const what : everything_handed_out())
      if (what->id == id) found += judged(static_cast<const http_network&>(*what), reply);
  }
  expect_golden("networks/golden/judged_replies", found);
}

// A server that has moved may have another sign of success than the network's own, which goes on counting. The cases
// are in pairs: without the owner's text in the endpoint file, then with it.
struct success_text_case {
  const http_network& network;
  std::string_view reply;
  int without;
  int with;
  const char* debug_output;  // the same both times
};

const success_text_case SUCCESS_TEXT_CASES[] = {
    // clang-format off
    {PWSWEATHER,      "{\"success\":true}",                 -1,  0, ""},
    {PWSWEATHER,      "{\"success\":false}",                -1, -1, ""},
    {PWSWEATHER,      "<body>Data Logged and posted</body>",   0,  0, "Reply: Data Logged and posted\n"},
    {PWSWEATHER,      "<body>no</body>\n\"success\":true",   -1,  0, "Reply: no\n"},
    {AWEKAS_PUSH,     "wait\n\"success\":true\n",            -1,  0, "Reply: wait\n"},
    {AWEKAS_PUSH,     "\"success\":\ntrue",                  -1, -1, "Reply: \"success\":\n"},
    {WUNDERGROUND,    "bad\n\"success\":true",                0,  0, "Reply: bad \"success\":true\n"},
    {WEATHERBUG,      "bad\n\"success\":true",               -1,  0, "Reply: bad \"success\":true\n"},
    {WINDFINDER,      "<body>no</body>\"success\":true",     -1,  0, "\n<<body>no</body>\"success\":true>\nReply: no\n"},
    {IDOKEP,          "\"success\":true",                   -1,  0, "Reply: \"success\":true\n"},
    {ANYTHINGWEATHER, "500\n\"success\":true",               -1,  0, "Reply: 500\"success\":true\nReply: OK\n"},
    {AWEKAS_PUSH,     "",                                   -1, -1, ""},
    {SAUERLANDWETTER, "",                                    0,  0, "Reply: OK\n"},
    {SAUERLANDWETTER, "\"success\":true",                   -1,  0, "Reply: \"success\":true\n"},
    // clang-format on
};

int judge(const http_network& network, std::string_view text) {
  reply_text reply;
  reply.append_text(text);
  error_text.clear();
  return judge_upload(reply, text.size(), network.reply);
}

void read_success_text(const http_network& network) {
  std::string line = std::string(endpoint_name(network.reply.server)) + " = http://host \"success\":true";
  std::FILE* const file = fmemopen(line.data(), line.size(), "r");
  read_endpoints(file, "endpoints");
  std::fclose(file);
}

TEST(ReplyJudgement, TakesTheOwnersSuccessTextToo) {
  for (const success_text_case& row : SUCCESS_TEXT_CASES) {
    for (const bool has_text : {false, true}) {
      SCOPED_TRACE(std::string(row.network.id) + ": " + std::string(row.reply));
      if (has_text) read_success_text(row.network);
      ::testing::internal::CaptureStderr();
      debug_flag = 1;
      EXPECT_EQ(judge(row.network, row.reply), has_text ? row.with : row.without);
      debug_flag = 0;
      EXPECT_EQ(::testing::internal::GetCapturedStderr(), row.debug_output);
      // A success leaves no reason of a failure.
      EXPECT_EQ(error_text.view().starts_with("upload") || error_text.view().starts_with("no response"),
                (has_text ? row.with : row.without) != 0);
      reset_endpoints();
    }
  }
}

// An empty reply, which it takes for a good one, is all that comes from a server that is not there.
TEST(ReplyJudgement, OfSauerlandwetterTakesNoSilenceForAYesWhenItsEndpointIsRefused) {
  std::string line = "sauerlandwetter = x";
  std::FILE* const file = fmemopen(line.data(), line.size(), "r");
  ::testing::internal::CaptureStderr();
  read_endpoints(file, "endpoints");
  ::testing::internal::GetCapturedStderr();
  std::fclose(file);
  EXPECT_EQ(judge(SAUERLANDWETTER, ""), -1);
  EXPECT_EQ(error_text.view(), "upload to sauerlandwetter failed: ");
  reset_endpoints();
}

}  // namespace
}  // namespace skypost::testing
