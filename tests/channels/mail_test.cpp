// The command that takes the mail. The end-to-end tests send it.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <string>

#include "base/process_state.h"
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

TEST(MailReport, SaysWhyItCouldNotStart) {
  flags = {};
  error_text.clear();
  error_text.append_text("left by another network");
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit no_descriptors{.rlim_cur = 0, .rlim_max = before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &no_descriptors);
  const int result = send_mail_report();
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(result, -1);
  EXPECT_EQ(error_text.view(),
            "error pipe open: /opt/sbin/sendmail -C /home/nimbulog/esmtprc borgervejr@dmi.dk 2>&1 | "
            "/usr/bin/logger: Too many open files");
}

}  // namespace
}  // namespace skypost::testing
