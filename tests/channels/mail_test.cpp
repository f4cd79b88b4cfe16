// The command that takes the mail. The end-to-end tests send it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "channels/channels.h"

namespace skypost::testing {
namespace {

std::string command_under(const std::string& root) {
  setenv("SKYPOST_ROOT", root.c_str(), 1);
  fixed_text<1'000> command;
  append_mail_command(command);
  unsetenv("SKYPOST_ROOT");
  return command.c_str();
}

// Only roots of plain characters go without quotes.
TEST(MailReport, CommandReachesTheMailProgramUnderAnyRoot) {
  const std::string rest = " borgervejr@dmi.dk 2>&1 | /usr/bin/logger";
  EXPECT_EQ(command_under(""), "/opt/sbin/sendmail -C /home/nimbulog/esmtprc" + rest);
  for (const char character : std::string(" \t\n!\"#$%&'()*+,:;<=>?@[\\]^`{|}~\x80\xff")) {
    const bool is_escaped = std::string("\"$`\\").find(character) != std::string::npos;
    const std::string root = std::string("/a") + (is_escaped ? "\\" : "") + character;
    EXPECT_EQ(command_under({'/', 'a', character}),
              '"' + root + "/opt/sbin/sendmail\" -C \"" + root + "/home/nimbulog/esmtprc\"" + rest);
  }
}

}  // namespace
}  // namespace skypost::testing
