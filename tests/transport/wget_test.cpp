// One network for each way of judging a reply. reply_judgement_test.cpp has more replies.

#include "transport/wget.h"

#include <gtest/gtest.h>

#include <string>

#include "base/debug.h"
#include "base/error_text.h"
#include "compose/command.h"
#include "networks/networks.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/no_more_files.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// Runs `command` in wget's place.
int upload_by(const http_network& network, const std::string& command) {
  fixed_text<COMMAND_CAPACITY> text;
  text.append_text(command);
  error_text.clear();
  error_text.append_text("left by another network");
  latest_exchange = {};
  return upload_via_wget(text, network.reply);
}

// Each case is a network and the command. The result begins with the exit status, -1 if nothing is known of it.
TEST(Wget, IsJudgedByWhatItPrintsAndItsStatus) {
  expect_cases("transport/golden/exchanges", [](const std::string& one) -> std::string {
    const std::string id = one.substr(0, one.find(' '));
    for (const upload* const what : every_upload()) {
      if (what->id != id) continue;
      const bool is_good = upload_by(static_cast<const http_network&>(*what), one.substr(id.size())) == 0;
      std::string result = std::to_string(latest_exchange.wget_status);
      result += is_good ? ", good" : std::string(", bad: ") + error_text.c_str();
      if (latest_exchange.doubt[0] != '\0') result += std::string("; ") + latest_exchange.doubt;
      return result.substr(0, 100);
    }
    return "no such network";
  });
}

TEST(Wget, IsNotRunIfItsCommandDidNotFit) {
  const appliance_folder appliance;
  const std::string marker = appliance.path("/must_not_exist");
  ASSERT_EQ(upload_by(WINDIT, "touch " + marker + "; echo OK #" + std::string(COMMAND_CAPACITY, 'x')), -1);
  EXPECT_NE(access(marker.c_str(), F_OK), 0);
  EXPECT_TRUE(error_text.view().starts_with("command longer than 9999 characters, not run: touch"));
  EXPECT_TRUE(latest_exchange.is_command_quoted);
}

// The alarm quotes the command with its password; the status must not.
TEST(Wget, TellsApartWhetherTheErrorQuotesTheCommand) {
  EXPECT_EQ(upload_by(WINDIT, "echo refused"), -1);
  EXPECT_FALSE(latest_exchange.is_command_quoted);
  const no_more_files limit;
  EXPECT_EQ(upload_by(WINDIT, "echo OK"), -1);
  EXPECT_EQ(error_text.view(), "error open pipe echo OK: Too many open files");
  EXPECT_TRUE(latest_exchange.is_command_quoted);
}

TEST(Wget, IsShownInDebugMode) {
  debug_flag = 1;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(upload_by(WINDIT, "printf 'bad\\r\\nnews\\n'"), -1);
  debug_flag = 0;
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "\nWINDIT\nprintf 'bad\\r\\nnews\\n'\nReply: badnews\n");
}

}  // namespace
}  // namespace skypost::testing
