// Met Office WOW's server replies {} or nothing to a good upload, so only wget's exit status tells it from an error.

#include <gtest/gtest.h>

#include <string>

#include "base/error_text.h"
#include "networks/networks.h"

namespace skypost::testing {
namespace {

class WgetStatus : public ::testing::Test {
 protected:
  // Runs `command` in wget's place.
  static int upload(const http_network& network, const std::string& command) {
    fixed_text<COMMAND_CAPACITY> text;
    text.append_text(command);
    error_text.clear();
    latest_exchange = {};
    return upload_via_wget(text, network.reply);
  }
};

struct verdict {
  int status;
  const char* reply;
  const char* reason;  // "" for success
};

TEST_F(WgetStatus, IsMetOfficesVerdict) {
  static constexpr char EMPTY[] = "no response from metoffice";
  static constexpr verdict VERDICTS[] = {
      // clang-format off
      {0, "",            ""},    {0, "{}",          ""},
      {4, "",            EMPTY}, {4, "{}",          "upload to metoffice failed: {}"},
      {6, "",            EMPTY}, {6, "a\\nb\\n", "upload to metoffice failed: a b "},
      {8, "",            EMPTY}, {8, "no site",     "upload to metoffice failed: no site"},
      {8, "a\\nsuccess", ""},  // the success word counts whatever the status
      // clang-format on
  };
  for (const auto& [status, reply, reason] : VERDICTS) {
    SCOPED_TRACE(std::to_string(status) + ' ' + reply);
    const std::string command = std::string("printf '") + reply + "'; exit " + std::to_string(status);
    EXPECT_EQ(upload(METOFFICE, command), *reason == '\0' ? 0 : -1);
    EXPECT_EQ(error_text.view(), reason);
    EXPECT_EQ(latest_exchange.wget_status, status);
  }
}

TEST_F(WgetStatus, SavesNoOtherNetwork) {
  for (const http_network* network : {&WUNDERGROUND, &PWSWEATHER, &IDOKEP})
    EXPECT_EQ(upload(*network, "echo {}"), -1);
  EXPECT_EQ(upload(ANYTHINGWEATHER, "printf ''"), -1);
  EXPECT_EQ(latest_exchange.wget_status, 0);
}

TEST_F(WgetStatus, IsThereOnlyOfAWgetThatTheTransportWaitedFor) {
  upload(METEONEWS, "exit 4");  // the real command would return tail's status
  EXPECT_EQ(latest_exchange.wget_status, NO_WGET_STATUS);
  upload(METOFFICE, "kill -9 $$");
  EXPECT_EQ(latest_exchange.wget_status, NO_WGET_STATUS);
  upload(METOFFICE, "exit 4");
  EXPECT_EQ(latest_exchange.wget_status, 4);
  upload(METOFFICE, std::string(COMMAND_CAPACITY + 1, 'x'));
  EXPECT_EQ(latest_exchange.wget_status, NO_WGET_STATUS);
}

// The transport stops reading when its buffer is full. Whether wget then fails to write the rest is chance.
TEST_F(WgetStatus, OfAReplyThatFillsItsBufferSaysNothing) {
  EXPECT_EQ(upload(METOFFICE, "printf '%09999d' 0"), 0);
  for (const char* const command : {"printf '%010000d' 0", "printf '%0100000d' 0", "yes"}) {
    SCOPED_TRACE(command);
    EXPECT_EQ(upload(METOFFICE, command), -1);
    EXPECT_EQ(latest_exchange.wget_status, NO_WGET_STATUS);
  }
}

// An upload that looks good by its reply may not have arrived.
TEST_F(WgetStatus, OfAnErrorCastsDoubtOnAGoodVerdict) {
  const struct {
    const http_network& network;
    const char* command;
    int result;
    bool is_doubted;
  } cases[] = {
      {SAUERLANDWETTER, "exit 0", 0, false},
      {SAUERLANDWETTER, "exit 4", 0, true},
      {WINDIT, "echo OK; exit 8", 0, true},
      {WINDIT, "exit 8", -1, false},
      {SAUERLANDWETTER, "kill -9 $$", 0, true},
      {METEONEWS, "echo; exit 8", 0, false},  // tail's exit status, not wget's
  };
  for (const auto& [network, command, result, is_doubted] : cases) {
    SCOPED_TRACE(std::string(network.id) + ": " + command);
    EXPECT_EQ(upload(network, command), result);
    EXPECT_EQ(latest_exchange.doubt[0] != '\0', is_doubted);
  }
}

}  // namespace
}  // namespace skypost::testing
