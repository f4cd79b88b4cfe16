// The networks' tests cover the judgement of replies.

#include "transport/wget.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "base/debug.h"
#include "base/error_text.h"
#include "compose/command.h"
#include "support/appliance_folder.h"
#include "support/no_more_files.h"

namespace skypost::testing {
namespace {

constexpr upload_spec SPEC = {.debug_header = "\nNETWORK\n%s\n",
                              .success = "OK",
                              .failure_format = "upload failed: %s",
                              .no_response_text = "no response"};

class Upload : public ::testing::Test {
 protected:
  void SetUp() override {
    debug_flag = 0;
    latest_exchange = {};
    error_text.clear();
    error_text.append_text("left by another network");
  }

  static int upload(const std::string& command) {
    fixed_text<COMMAND_CAPACITY> text;
    text.append_text(command);
    return upload_via_wget(text, SPEC);
  }

  static std::string error() { return std::string(error_text.view()); }
};

TEST_F(Upload, ReadsWhatTheCommandPrintsUpToItsCapacityAndJudgesItsText) {
  constexpr std::pair<const char*, const char*> CASES[] = {
      // the command; the failure, if any
      {"printf 'one\\ntwo\\n'; echo OK", ""}, {"printf 'NO\\0OK'", "upload failed: NO"},
      {"printf ''", "no response"},           {"printf '\\0'", "upload failed: "},
      {"printf '%09998dOK' 0", ""},
  };
  for (const auto& [command, reason] : CASES) {
    SCOPED_TRACE(command);
    error_text.clear();
    EXPECT_EQ(upload(command), *reason == '\0' ? 0 : -1);
    EXPECT_EQ(error(), reason);
  }
  EXPECT_EQ(upload("printf '%09999dOK' 0"), -1);
}

TEST_F(Upload, RunsNoCommandThatDidNotFit) {
  const appliance_folder appliance;
  const std::string marker = appliance.path("/must_not_exist");
  ASSERT_EQ(upload("touch " + marker + "; echo OK #" + std::string(COMMAND_CAPACITY, 'x')), -1);
  EXPECT_NE(access(marker.c_str(), F_OK), 0);
  EXPECT_EQ(error().rfind("command longer than 9999 characters, not run: touch", 0), 0U) << error();
  EXPECT_TRUE(latest_exchange.is_command_quoted);
}

// The alarm quotes the command with its password; the status must not.
TEST_F(Upload, TellsApartWhetherTheErrorQuotesTheCommand) {
  EXPECT_EQ(upload("echo refused"), -1);
  EXPECT_FALSE(latest_exchange.is_command_quoted) << error();
  const no_more_files limit;
  EXPECT_EQ(upload("echo OK"), -1);
  EXPECT_EQ(error(), "error open pipe echo OK: Too many open files");
  EXPECT_TRUE(latest_exchange.is_command_quoted);
}

TEST_F(Upload, PrintsTheCommandInDebugMode) {
  debug_flag = 1;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(upload("printf 'bad\\r\\nnews\\n'"), -1);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "\nNETWORK\nprintf 'bad\\r\\nnews\\n'\nReply: badnews\n");
}

}  // namespace
}  // namespace skypost::testing
