// The transport's own part: what is run, what is read of it and what becomes of a command that cannot
// run. The networks' verdicts on replies stand with the networks.

#include "transport/upload.h"

#include <gtest/gtest.h>

#include <string>

#include "base/process_state.h"
#include "transport/command.h"
#include "transport/md5.h"

namespace skypost::testing {
namespace {

constexpr upload_spec reply_spec(reply_mode mode) {
  return {.debug_header = "\nNETWORK\n%s\n",
          .mode = mode,
          .success_word = "OK",
          .failure_format = "upload failed: %s",
          .no_response_text = "no response",
          .judge = judge_reply};
}

class Upload : public ::testing::Test {
 protected:
  void SetUp() override {
    flags = {};
    error_text.clear();
  }

  static int upload(const std::string& command, reply_mode mode = reply_mode::raw) {
    fixed_text<COMMAND_CAPACITY> text;
    text.append_text(command);
    return upload_via_wget(text, reply_spec(mode));
  }

  static std::string error() { return error_text.c_str(); }
};

TEST_F(Upload, JudgesTheReplyInTheModeOfTheNetwork) {
  struct mode_case {
    const char* reply;  // as printf writes it
    reply_mode mode;
    const char* error;  // nullptr: success
  };
  const mode_case cases[] = {
      {"OK", reply_mode::first_line, nullptr},
      {"ERROR\\nOK", reply_mode::first_line, "upload failed: ERROR"},
      {"ERROR\\nOK", reply_mode::raw, nullptr},
      {"ERROR\\nOK", reply_mode::breaks_to_blanks, nullptr},
      {"O\\r\\nK\\r\\n", reply_mode::breaks_to_blanks, "upload failed: O K "},
      {"O\\r\\nK\\r\\n", reply_mode::raw, "upload failed: OK"},
      {"NO\\0OK", reply_mode::raw, "upload failed: NO"},
      {"", reply_mode::raw, "no response"},
  };
  for (const mode_case& row : cases) {
    SCOPED_TRACE(row.reply);
    error_text.clear();
    EXPECT_EQ(upload(std::string("printf '") + row.reply + "'", row.mode), row.error == nullptr ? 0 : -1);
    EXPECT_EQ(error(), row.error == nullptr ? "" : row.error);
  }
}

TEST_F(Upload, ReadsNoMoreThanTheCapacity) {
  EXPECT_EQ(upload("printf '%09998dOK' 0"), 0);
  EXPECT_EQ(upload("printf '%09999dOK' 0"), -1);
}

TEST_F(Upload, RunsNoCommandThatDidNotFit) {
  const std::string marker = ::testing::TempDir() + "must_not_exist";
  ASSERT_EQ(upload("touch " + marker + "; echo OK #" + std::string(COMMAND_CAPACITY, 'x')), -1);
  EXPECT_NE(access(marker.c_str(), F_OK), 0);
  EXPECT_EQ(error().rfind("command longer than 9999 characters, not run: touch", 0), 0U) << error();
}

TEST_F(Upload, SaysTheSameToTheOwnerWithAndWithoutDebugOutput) {
  for (const std::int32_t debug : {0, 1}) {
    flags.debug_flag = debug;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(upload("printf 'bad\\r\\nnews\\n'"), -1);
    EXPECT_EQ(error(), "upload failed: badnews");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              debug == 0 ? "" : "\nNETWORK\nprintf 'bad\\r\\nnews\\n'\nReply: badnews\n");
  }
}

TEST(UrlValue, ReachesItsPlaceInOnePiece) {
  fixed_text<200> command;
  append_url_value(command, "a&b#c\"d`e$(f)\\g %26+");
  EXPECT_STREQ(command.c_str(), "a%26b%23c\\\"d\\`e\\$(f)\\\\g %26+");
}

TEST(Md5, MatchesTheDigestsOfItsDefinition) {
  fixed_text<32> digest;
  EXPECT_STREQ(md5_hex("", digest).c_str(), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_STREQ(md5_hex("abc", digest).c_str(), "900150983cd24fb0d6963f7d28e17f72");
}

}  // namespace
}  // namespace skypost::testing
