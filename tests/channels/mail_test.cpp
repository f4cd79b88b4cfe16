// The command that takes the mail. The end-to-end tests send it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "channels/channels.h"

namespace skypost::testing {
namespace {

TEST(MailReport, CommandReachesTheMailProgramUnderAnyRoot) {
  fixed_text<1'000> command;
  append_mail_command(command);
  EXPECT_EQ(command.view(),
            "/opt/sbin/sendmail -C /home/nimbulog/esmtprc borgervejr@dmi.dk 2>&1 | /usr/bin/logger");

  setenv("SKYPOST_ROOT", "/tmp/my $HOME", 1);
  command.clear();
  append_mail_command(command);
  unsetenv("SKYPOST_ROOT");
  EXPECT_EQ(command.view(),
            "\"/tmp/my \\$HOME/opt/sbin/sendmail\" -C \"/tmp/my \\$HOME/home/nimbulog/esmtprc\" "
            "borgervejr@dmi.dk 2>&1 | /usr/bin/logger");
}

}  // namespace
}  // namespace skypost::testing
