#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/error_text.h"
#include "channels/channels.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "support/appliance_folder.h"
#include "support/no_more_files.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

class MailReport : public ::testing::Test {
 protected:
  MailReport() {
    live_data_stale = 0;
    live_record = fully_equipped_station();
    fill_settings(station_settings);
    latest_exchange = {};
  }
};

// golden/failing_calls has the command under an ordinary root.
TEST_F(MailReport, QuotesARootWithSpecialCharacters) {
  setenv("SKYPOST_ROOT", R"(/a b"$`\c)", 1);
  fixed_text<1'000> command;
  append_mail_command(command);
  unsetenv("SKYPOST_ROOT");
  EXPECT_STREQ(command.c_str(),
               R"("/a b\"\$\`\\c/opt/sbin/sendmail" -C "/a b\"\$\`\\c/home/nimbulog/esmtprc" )"
               "borgervejr@dmi.dk 2>&1 | /usr/bin/logger");
}

// The second sender is cut at its line break, so it is empty too.
TEST_F(MailReport, IsNotSentIfTheOnlySenderIsRefused) {
  read_endpoint_lines("mail_sender = me");
  for (const char* const sender : {"", "\nbcc: all@station.example"}) {
    station_settings.set_text(sender_address, sender);
    EXPECT_EQ(send_mail_report(), -1);
    EXPECT_EQ(error_text.view(), "error endpoint file: no valid value for mail_sender, nothing was sent");
  }
  reset_endpoints();
}

// Without a mail program the upload counts as good, but nothing was sent.
TEST_F(MailReport, CastsDoubtOnItselfWithoutAMailProgram) {
  std::signal(SIGPIPE, SIG_IGN);  // as in the program, from the shell that finds no mail program
  const appliance_folder appliance;
  EXPECT_EQ(send_mail_report(), 0);
  EXPECT_STREQ(latest_exchange.doubt, "the mail program cannot be run: No such file or directory");
  appliance.write("/opt/sbin/sendmail", "#!/bin/sh\ncat >/dev/null\n");
  std::filesystem::permissions(appliance.path("/opt/sbin/sendmail"), std::filesystem::perms::owner_all);
  latest_exchange = {};
  EXPECT_EQ(send_mail_report(), 0);
  EXPECT_STREQ(latest_exchange.doubt, "");
}

TEST_F(MailReport, SaysThatItsErrorQuotesTheCommand) {
  const no_more_files limit;
  EXPECT_EQ(send_mail_report(), -1);
  EXPECT_TRUE(error_text.view().ends_with(": Too many open files")) << error_text.c_str();
  EXPECT_TRUE(latest_exchange.is_command_quoted);
}

}  // namespace
}  // namespace skypost::testing
