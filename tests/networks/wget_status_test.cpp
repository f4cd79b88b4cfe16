// Met Office WOW's server replies {} or nothing to a good upload, so only wget's exit status tells it from an error.

#include <gtest/gtest.h>

#include <string>

#include "base/error_text.h"
#include "networks/networks.h"

namespace skypost::testing {
namespace {

// Runs `command` in wget's place.
int upload(const http_network& network, const std::string& command) {
  fixed_text<COMMAND_CAPACITY> text;
  text.append_text(command);
  error_text.clear();
  latest_exchange = {};
  return upload_via_wget(text, network.reply);
}

struct status_case {
  const http_network& network;
  const char* command;
  const char* failure;  // "" for success
  int status;
  bool is_doubted = false;  // it looks good, but may not have arrived
};

TEST(WgetStatus, DecidesOrCastsDoubt) {
  constexpr int NONE = NO_WGET_STATUS;
  const status_case cases[] = {
      // clang-format off
      {METOFFICE, "exit 0",                        "",                                   0},
      {METOFFICE, "echo {}",                       "",                                   0},
      {METOFFICE, "exit 4",                        "no response from metoffice",         4},
      {METOFFICE, "printf {}; exit 4",             "upload to metoffice failed: {}",     4},
      {METOFFICE, "printf 'a\\nb\\n'; exit 6",     "upload to metoffice failed: a b ",   6},
      {METOFFICE, "printf 'a\\nsuccess'; exit 8",  "",                                   8, true},
      {METOFFICE, "kill -9 $$",                    "no response from metoffice",         NONE},
      // It saves no other network.
      {WUNDERGROUND,    "printf {}", "upload to weather underground failed: {}",        0},
      {ANYTHINGWEATHER, "exit 0",    "no response from anythingweather",                    0},
      {SAUERLANDWETTER, "exit 0",          "",                                           0},
      {SAUERLANDWETTER, "exit 4",          "",                                           4, true},
      {SAUERLANDWETTER, "kill -9 $$",      "",                                           NONE, true},
      {WINDIT,          "echo OK; exit 8", "",                                           8, true},
      {WINDIT,          "exit 8",          "no response from windit",                    8},
      // The real command returns tail's status.
      {METEONEWS,       "echo; exit 8",    "",                                           NONE},
      // clang-format on
  };
  for (const auto& [network, command, failure, status, is_doubted] : cases) {
    SCOPED_TRACE(std::string(network.id) + ": " + command);
    EXPECT_EQ(upload(network, command), *failure == '\0' ? 0 : -1);
    EXPECT_EQ(error_text.view(), failure);
    EXPECT_EQ(latest_exchange.wget_status, status);
    EXPECT_EQ(latest_exchange.doubt[0] != '\0', is_doubted);
  }
}

// The transport stops reading when its buffer is full. Whether wget then fails to write the rest is chance.
TEST(WgetStatus, OfAReplyThatFillsItsBufferSaysNothing) {
  EXPECT_EQ(upload(METOFFICE, "printf '%09999d' 0"), 0);
  for (const char* const command : {"printf '%010000d' 0", "printf '%0100000d' 0", "yes"}) {
    SCOPED_TRACE(command);
    EXPECT_EQ(upload(METOFFICE, command), -1);
    EXPECT_EQ(latest_exchange.wget_status, NO_WGET_STATUS);
  }
}

}  // namespace
}  // namespace skypost::testing
