// What each network's judgement makes of a reply: a good upload taken for a bad one alarms the owner for
// nothing, a bad one taken for good goes unnoticed for weeks.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

#include "base/process_state.h"
#include "support/every_network.h"

namespace skypost::testing {
namespace {

struct reply_case {
  const http_network& network;
  std::string_view reply;
  int result;
  std::string_view error;
};

const reply_case CASES[] = {
    {WEATHER_UNDERGROUND, "success\n", 0, ""},
    {WEATHER_UNDERGROUND, "notice\r\nsuccess\r\n", 0, ""},
    {WEATHER_UNDERGROUND, "bad\r\nkey\n", -1, "upload to weather underground failed: bad key "},
    {WEATHER_UNDERGROUND, "Success", -1, "upload to weather underground failed: Success"},
    {WEATHER_UNDERGROUND, "", -1, "no response from weather underground"},
    {WEATHER_UNDERGROUND_RAPID, "late", -1, "upload to weather underground failed: late"},
    {WEATHERFLOW, "{\"status\":\"success\"}", 0, ""},
    {WEATHERFLOW, "no\n", -1, "upload to weatherflow failed: no "},
    {WEATHERFLOW_RAPID, "", -1, "no response from weatherflow"},
    {METOFFICE_WOW, "success", 0, ""},
    {METOFFICE_WOW, "{}", -1, "upload to metoffice failed: {}"},
    {METOFFICE_WOW, "", -1, "no response from metoffice"},
    {PWSWEATHER, "<html>\n<body>\nData Logged and posted\n</body>\n</html>\n", 0, ""},
    {PWSWEATHER, "<body>Data Logged and posted", 0, ""},
    {PWSWEATHER, "<body>\r\nERROR\r\n</body> Data Logged and posted", -1, "upload to HAMweather: ERROR"},
    {PWSWEATHER, "Data Logged\r\nand posted", -1, "upload to HAMweather: Data Loggedand posted"},
    {PWSWEATHER, "Data Logged and posted", -1, "upload to HAMweather: Data Logged and posted"},
    {PWSWEATHER, "", -1, "no response from HAMweather"},
    {WEATHERBUG, "Successfully Received\n", 0, ""},
    {WEATHERBUG, "success", -1, "upload to weather bug failed: success"},
    {WEATHERBUG, "", -1, "no response from weather bug"},
    {AWEKAS, "OK\n", 0, ""},
    {AWEKAS, "ERROR\r\nOK\r\n", -1, "upload to awekas: ERROR"},
    {AWEKAS, "\nOK", -1, "upload to awekas: "},
    {AWEKAS, "", -1, "no response from awekas"},
    {WEDAAL, "Daten OK", 0, ""},
    {WEDAAL, "ERROR\nOK", -1, "upload to wedaal: ERROR"},
    {WEDAAL, "", -1, "no response from wedaal"},
    {WINDFINDER, "<html><body>OK</body></html>", 0, ""},
    {WINDFINDER, "<html><body>ERR\r\nno</body>OK</html>", -1, "upload to windfinder: ERRno"},
    {WINDFINDER, "<body>ERR", -1, "upload to windfinder: ERR"},
    {WINDFINDER, "\n", 0, ""},
    {WINDFINDER, "1\r\n", 0, ""},
    {WINDFINDER, "OK", -1, "upload to windfinder: OK"},
    {WINDFINDER, "Not\r\nFound", -1, "upload to windfinder: NotFound"},
    {WINDFINDER, "", -1, "no response from windfinder"},
    {WINDIT, "\nstatus OK\n", 0, ""},
    {WINDIT, "un\r\nknown\n", -1, "upload to windit: unknown"},
    {WINDIT, "", -1, "no response from windit"},
    {IDOKEP, "<p>\nFeltoltes sikeres\n", 0, ""},
    {IDOKEP, "<p>\nk\xE9sz!", 0, ""},
    {IDOKEP, "k\xC3\xA9sz!\r\n", -1, "upload to idokep: k\xC3\xA9sz!"},
    {IDOKEP, "", -1, "no response from idokep"},
    {WETTERARCHIV, "a\nstatus=SUCCESS\n", 0, ""},
    {WETTERARCHIV, "status=\r\nERROR", -1, "upload to wetterarchiv failed: status=ERROR"},
    {WETTERARCHIV, "", -1, "no response from wetterarchiv"},
    {ANYTHINGWEATHER, "HTTP request sent, awaiting response... 200 OK\nLength: 2", 0, ""},
    // A good upload all the same: here only the text follows the first line.
    {ANYTHINGWEATHER, "--2012-05-06--\r\nHTTP request sent... 200 OK\nOK\n", 0,
     "upload to www.anythingweather.com failed: --2012-05-06--"},
    {ANYTHINGWEATHER, "--2012-05-06--\nHTTP request sent... 500 Error\n", -1,
     "upload to www.anythingweather.com failed: --2012-05-06--"},
    {ANYTHINGWEATHER, "", -1, "no response from anythingweather"},
    {METEONEWS, "\n", 0, ""},
    {METEONEWS, "Thanks\nERROR", 0, ""},
    {METEONEWS, "Authorization failed\r\n", -1, "upload to meteonews failed: Authorization failed"},
    {METEONEWS, "error 500", -1, "upload to meteonews failed: error 500"},
    {METEONEWS, "INVALID data\nmore", -1, "upload to meteonews failed: INVALID data"},
    {METEONEWS, "", -1, "no response from meteonews"},
    {SHNETZ, "OK\r\n", 0, ""},
    {SHNETZ, "Fehler\r\nOK\r\n", -1, "upload to SH-Netz: Fehler"},
    {SHNETZ, "", -1, "no response from SH-Netz"},
    {REGIOWETTER_BW, "<p>\nSuccess\n", 0, ""},
    {REGIOWETTER_BW, "no\nsuccess\n", -1, "upload to regiowetter-bw failed: no success "},
    {REGIOWETTER_BW, "", -1, "no response from regiowetter-bw"},
    {REGIOWETTER, "<p>\nsuccess\n", 0, ""},
    {REGIOWETTER, "no\nSuccess\n", -1, "upload to regiowetter failed: noSuccess"},
    {REGIOWETTER, "", -1, "no response from regiowetter"},
    {SAUERLANDWETTER, "", 0, ""},
    {SAUERLANDWETTER, std::string_view("\0x", 2), -1, "upload to sauerlandwetter failed: "},
    {SAUERLANDWETTER, "Daten\nerfolgreich gespeichert\n", 0, ""},
    {SAUERLANDWETTER, "Erfolgreich\r\n", -1, "upload to sauerlandwetter failed: Erfolgreich"},
    {WETTERRING, "data\nsuccessfully stored", 0, ""},
    {WETTERRING, "success\n", -1, "upload to wetterring failed: success"},
    {WETTERRING, "", -1, "no response from wetterring"},
};

int judge(const http_network& network, std::string_view text) {
  reply_text reply;
  reply.append_text(text);
  reply.set_length(std::strlen(reply.c_str()));
  error_text.clear();
  return judge_upload(reply, text.size(), network.reply);
}

TEST(ReplyJudgement, IsTheSameWithAndWithoutDebugOutput) {
  for (const reply_case& row : CASES) {
    for (const std::int32_t debug : {0, 1}) {
      SCOPED_TRACE(std::string(row.network.reply.debug_header) + std::string(row.reply));
      ::testing::internal::CaptureStderr();
      flags.debug_flag = debug;
      EXPECT_EQ(judge(row.network, row.reply), row.result);
      flags.debug_flag = 0;
      EXPECT_EQ(error_text.view(), row.error);
      const std::string output = ::testing::internal::GetCapturedStderr();
      EXPECT_TRUE(debug == 1 || output.empty()) << output;
    }
  }
}

struct debug_case {
  const http_network& network;
  std::string_view reply;
  std::string_view output;
};

const debug_case DEBUG_CASES[] = {
    {PWSWEATHER, "<html><body>\nno\n</body>", "Reply: no\n"},
    {PWSWEATHER, "no page", ""},
    {WINDFINDER, "<body>\nOK</body>\n", "\n<<body>\nOK</body>\n>\nReply: OK\n"},
    {WINDFINDER, "no page\n", "\n<no page\n>\n"},
    {AWEKAS, "OK\nmore", "Reply: OK\n"},
    {IDOKEP, "k\xE9sz!\r\n\r\n", "Reply: k\xE9sz!\n"},
    {ANYTHINGWEATHER, "200 OK\nmore", "Reply: 200 OKmore\n"},
    {ANYTHINGWEATHER, "--\r\n200 OK", "Reply: --200 OK\nReply: OK\n"},
    {ANYTHINGWEATHER, "", "Reply: OK\n"},
    {METEONEWS, "one\ntwo", "Reply: onetwo\n"},
    {SAUERLANDWETTER, "", "Reply: OK\n"},
    {SAUERLANDWETTER, "erfolgreich\r\n", "Reply: erfolgreich\n"},
};

TEST(ReplyJudgement, ShowsTheReplyInDebugMode) {
  for (const debug_case& row : DEBUG_CASES) {
    SCOPED_TRACE(std::string(row.network.reply.debug_header) + std::string(row.reply));
    ::testing::internal::CaptureStderr();
    flags.debug_flag = 1;
    judge(row.network, row.reply);
    flags.debug_flag = 0;
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), row.output);
  }
}

}  // namespace
}  // namespace skypost::testing
