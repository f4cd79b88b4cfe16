// What each network's judgement makes of a reply: a good upload taken for a bad one alarms the owner for
// nothing, a bad one taken for good goes unnoticed for weeks. Of the networks that are judged alike there is one for
// each way of reading a reply; golden/replies has the word and the way of each. The plainest replies of all, the empty
// one among them, come in the end-to-end tests.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

#include "base/debug.h"
#include "base/error_text.h"
#include "networks/networks.h"

namespace skypost::testing {
namespace {

struct reply_case {
  const http_network& network;
  std::string_view reply;
  int result;
  std::string_view error;              // empty: none is written
  const char* debug_output = nullptr;  // nullptr: not looked at
};

const reply_case CASES[] = {
    // clang-format off
    {WUNDERGROUND, "notice\r\nsuccess\r\n", 0, ""},
    {WUNDERGROUND, "bad\r\nkey\n", -1, "upload to weather underground failed: bad key "},
    {PWSWEATHER, "<html>\n<body>\nData Logged and posted\n</body>\n</html>\n", 0, ""},
    {PWSWEATHER, "<body>Data Logged and posted", 0, ""},
    {PWSWEATHER, "<body>\r\nERROR\r\n</body> Data Logged and posted", -1, "upload to HAMweather: ERROR"},
    {PWSWEATHER, "Data Logged\r\nand posted", -1, "upload to HAMweather: Data Loggedand posted"},
    {PWSWEATHER, "Data Logged and posted", -1, "upload to HAMweather: Data Logged and posted", ""},
    {PWSWEATHER, "<html><body>\nno\n</body>", -1, "upload to HAMweather: no", "Reply: no\n"},
    {AWEKAS_PUSH, "ERROR\r\nOK\r\n", -1, "upload to awekas: ERROR"},
    {AWEKAS_PUSH, "OK\nmore", 0, "", "Reply: OK\n"},
    {AWEKAS_PUSH, "\nOK", -1, "upload to awekas: "},
    {WINDFINDER, "<body>\nOK</body>\n", 0, "", "\n<<body>\nOK</body>\n>\nReply: OK\n"},
    {WINDFINDER, "<html><body>ERR\r\nno</body>OK</html>", -1, "upload to windfinder: ERRno"},
    {WINDFINDER, "<body>ERR", -1, "upload to windfinder: ERR"},
    {WINDFINDER, "\n", 0, ""},
    {WINDFINDER, "1\r\n", 0, ""},
    {WINDFINDER, "OK", -1, "upload to windfinder: OK"},
    {WINDFINDER, "Not\r\nFound", -1, "upload to windfinder: NotFound", "\n<Not\r\nFound>\n"},
    {WINDIT, "\nstatus OK\n", 0, ""},
    {WINDIT, "un\r\nknown\n", -1, "upload to windit: unknown"},
    {IDOKEP, "<p>\nFeltoltes sikeres\n", 0, ""},
    {IDOKEP, "<p>\nk\xE9sz!\r\n\r\n", 0, "", "Reply: <p>k\xE9sz!\n"},
    {IDOKEP, "k\xC3\xA9sz!\r\n", -1, "upload to idokep: k\xC3\xA9sz!"},
    {ANYTHINGWEATHER, "HTTP request sent... 200 OK\nLength: 2", 0, "", "Reply: HTTP request sent... 200 OKLength: 2\n"},
    {ANYTHINGWEATHER, "--2012\r\n200 OK\nOK\n", 0, "", "Reply: --2012200 OKOK\nReply: OK\n"},
    {ANYTHINGWEATHER, "--2012\n500 Error\n", -1, "upload to www.anythingweather.com failed: --2012"},
    {ANYTHINGWEATHER, "", -1, "no response from anythingweather", "Reply: OK\n"},
    {METEONEWS, "\n", 0, ""},
    {METEONEWS, "Thanks\nERROR", 0, "", "Reply: ThanksERROR\n"},
    {METEONEWS, "Authorization failed\r\n", -1, "upload to meteonews failed: Authorization failed"},
    {METEONEWS, "error 500", -1, "upload to meteonews failed: error 500"},
    {METEONEWS, "INVALID data\nmore", -1, "upload to meteonews failed: INVALID data"},
    {METEONEWS, "", -1, "no response from meteonews"},
    {SAUERLANDWETTER, "", 0, "", "Reply: OK\n"},
    {SAUERLANDWETTER, std::string_view("\0x", 2), -1, "upload to sauerlandwetter failed: "},
    {SAUERLANDWETTER, "Daten\nerfolgreich\r\n", 0, "", "Reply: Datenerfolgreich\n"},
    {SAUERLANDWETTER, "Erfolgreich\r\n", -1, "upload to sauerlandwetter failed: Erfolgreich"},
    // clang-format on
};

// What another network has left; a failure replaces it, a success leaves it alone.
constexpr std::string_view LEFT = "left by another network";

int judge(const http_network& network, std::string_view text) {
  reply_text reply;
  reply.append_text(text);
  reply.set_length(std::strlen(reply.c_str()));
  error_text.clear();
  error_text.append_text(LEFT);
  return judge_upload(reply, text.size(), network.reply);
}

TEST(ReplyJudgement, IsTheSameWithAndWithoutDebugOutput) {
  for (const reply_case& row : CASES) {
    for (const std::int32_t debug : {0, 1}) {
      SCOPED_TRACE(std::string(row.network.id) + ": " + std::string(row.reply));
      ::testing::internal::CaptureStderr();
      debug_flag = debug;
      EXPECT_EQ(judge(row.network, row.reply), row.result);
      debug_flag = 0;
      EXPECT_EQ(error_text.view(), row.error.empty() ? LEFT : row.error);
      const std::string output = ::testing::internal::GetCapturedStderr();
      if (debug == 0 || row.debug_output != nullptr) {
        EXPECT_EQ(output, debug == 0 ? "" : row.debug_output);
      }
    }
  }
}

}  // namespace
}  // namespace skypost::testing
