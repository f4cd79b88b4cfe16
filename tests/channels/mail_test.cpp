// The mail and the command that takes it. The end-to-end tests send it.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "base/process_state.h"
#include "channels/channels.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// 2024-03-14 09:30:00 in Berlin.
moment march_morning() {
  setenv("TZ", "Europe/Berlin", 1);
  return moment_at(1'710'405'000);
}

std::string mail_of(const settings_record& settings, const LiveRecord& live) {
  outgoing_text mail;
  BORGERVEJR.compose(mail, {settings, live, march_morning(), ORDINARY_BOARD});
  return mail.c_str();
}

void expect_body(const LiveRecord& live, const std::string& lines) {
  const std::string mail = mail_of(settings_record{}, live);
  EXPECT_EQ(mail.substr(mail.find("\n\n") + 2), "14/03/2024 09:30:00\r\n" + lines);
}

TEST(MailReport, BodyHasALineForEachKnownValue) {
  LiveRecord live = sparse_station();
  expect_body(live, "Humidity: 57%\r\nTemp: 21.5C\r\n");
  live.temp10 = -5;
  live.wind10 = 25;  // halves go away from zero
  live.last15mmaxgust10 = 35;
  expect_body(live, "Humidity: 57%\r\nTemp: -0.5C\r\nWind Spd: 3mps\r\nWind Gust: 4mps\r\n");
  expect_body(fully_equipped_station(),
              "Humidity: 57%\r\nTemp: 21.5C\r\nRaw Barom: 987.40hPa\r\nSolar: 457W/sqm\r\n"
              "Wind Dir: 225\r\nWind Spd: 4mps\r\nWind Gust: 7mps\r\nTot Rain: 6.4mm\r\n");
}

TEST(MailReport, HeaderNamesTheSenderOnOneLine) {
  constexpr std::pair<const char*, const char*> CASES[] = {
      // the setting, what becomes of it
      {"", "root@localhost"},
      {"Owner <owner@example.org>", "Owner <owner@example.org>"},
      {"owner@example.org\r\nbcc: all@example.org", "owner@example.org"},
      {"owner@example.org\n\nbuy this", "owner@example.org"},
      {"\nbcc: all@example.org", "root@localhost"},
  };
  for (const auto& [setting, sender] : CASES) {
    settings_record settings{};
    settings.set_text(sender_address, setting);
    const std::string mail = mail_of(settings, sparse_station());
    EXPECT_EQ(mail.substr(0, mail.find("\n\n") + 2),
              std::string("date: Thu, 14 Mar 2024 09:30:00 +0100\nto: borgervejr@dmi.dk\nfrom: ") + sender +
                  "\nsubject: Nimbulog weather report\n\n");
  }
}

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
