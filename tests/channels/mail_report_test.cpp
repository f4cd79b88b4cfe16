#include "channels/mail_report.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/paths.h"
#include "base/process_state.h"
#include "run/process.h"
#include "support/appliance_folder.h"
#include "support/no_descriptors.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// 2024-03-14 09:30:00 in Berlin.
moment march_morning() {
  setenv("TZ", "Europe/Berlin", 1);
  return moment_at(1'710'405'000);
}

LiveRecord example_station() {
  LiveRecord live = sparse_station();
  live.hum = 81;
  live.temp10 = 52;
  live.press10 = 9874;
  live.solar10 = 1236;
  live.winddir = 270;
  live.wind10 = 34;
  live.last15mmaxgust10 = 71;
  live.todayraintotal10 = 12;
  return live;
}

std::string body_of(const LiveRecord& live) {
  fixed_text<1'000> body;
  compose_mail_body(body, live, march_morning());
  return body.c_str();
}

TEST(MailReport, BodyOfAllValues) {
  EXPECT_EQ(body_of(example_station()),
            "14/03/2024 09:30:00\r\n"
            "Humidity: 81%\r\n"
            "Temp: 5.2C\r\n"
            "Raw Barom: 987.40hPa\r\n"
            "Solar: 124W/sqm\r\n"
            "Wind Dir: 270\r\n"
            "Wind Spd: 3mps\r\n"
            "Wind Gust: 7mps\r\n"
            "Tot Rain: 1.2mm\r\n");
}

TEST(MailReport, BodyOfTheOutdoorValuesAlone) {
  EXPECT_EQ(body_of(sparse_station()), "14/03/2024 09:30:00\r\nHumidity: 57%\r\nTemp: 21.5C\r\n");
}

TEST(MailReport, RoundsHalvesAwayFromZero) {
  LiveRecord live = sparse_station();
  live.temp10 = -5;
  live.wind10 = 25;
  live.last15mmaxgust10 = 35;
  EXPECT_EQ(body_of(live),
            "14/03/2024 09:30:00\r\nHumidity: 57%\r\nTemp: -0.5C\r\nWind Spd: 3mps\r\nWind Gust: 4mps\r\n");
}

TEST(MailReport, HeaderNamesTheSenderOnOneLine) {
  struct sender_case {
    const char* setting;
    const char* sender;
  };
  const sender_case cases[] = {
      {"", "root@localhost"},
      {"Owner <owner@example.org>", "Owner <owner@example.org>"},
      {"owner@example.org\r\nbcc: all@example.org", "owner@example.org"},
      {"owner@example.org\n\nbuy this", "owner@example.org"},
      {"\nbcc: all@example.org", "root@localhost"},
  };
  for (const sender_case& row : cases) {
    settings_record settings{};
    settings.set_text(sender_address, row.setting);
    fixed_text<1'000> header;
    compose_mail_header(header, settings, march_morning());
    EXPECT_EQ(header.view(),
              std::string("date: Thu, 14 Mar 2024 09:30:00 +0100\nto: borgervejr@dmi.dk\nfrom: ") +
                  row.sender + "\nsubject: Nimbulog weather report\n\n");
  }
}

TEST(MailReport, CommandReachesTheMailProgramUnderAnyRoot) {
  fixed_text<1'000> command;
  compose_mail_command(command);
  EXPECT_EQ(command.view(),
            "/opt/sbin/sendmail -C /home/nimbulog/esmtprc borgervejr@dmi.dk 2>&1 | /usr/bin/logger");

  setenv("SKYPOST_ROOT", "/tmp/my $HOME", 1);
  command.clear();
  compose_mail_command(command);
  unsetenv("SKYPOST_ROOT");
  EXPECT_EQ(command.view(),
            "\"/tmp/my \\$HOME/opt/sbin/sendmail\" -C \"/tmp/my \\$HOME/home/nimbulog/esmtprc\" "
            "borgervejr@dmi.dk 2>&1 | /usr/bin/logger");
}

class MailDelivery : public ::testing::Test {
 protected:
  void SetUp() override {
    prepare_process();
    flags = {};
    error_text.clear();
    fill_settings(station_settings);
    live_record = example_station();
  }

  // The mail program becomes a script, in whose folder its files end up.
  void put_mail_program(const std::string& lines) const {
    appliance_.write(MAIL_PROGRAM_PATH, "#!/bin/sh\ncd \"${0%/*}\"\n" + lines);
    std::filesystem::permissions(appliance_.path(MAIL_PROGRAM_PATH), std::filesystem::perms::owner_all);
  }

  std::filesystem::path mail_path() const { return appliance_.path("/opt/sbin/mail"); }

  const appliance_folder appliance_;
};

TEST_F(MailDelivery, HandsTheMailOver) {
  put_mail_program("echo \"$1 $3\" > mail; cat >> mail\n");
  ASSERT_EQ(send_mail_report(), 0);
  const std::string mail = read_whole_file(mail_path());
  EXPECT_TRUE(mail.starts_with("-C borgervejr@dmi.dk\ndate: ")) << mail;
  EXPECT_NE(mail.find("\nsubject: Nimbulog weather report\n\n"), std::string::npos) << mail;
  EXPECT_TRUE(mail.ends_with("\r\nTot Rain: 1.2mm\r\n")) << mail;
}

TEST_F(MailDelivery, CountsWhateverBecomesOfIt) {
  EXPECT_EQ(send_mail_report(), 0);  // no such program
  put_mail_program("exec 0<&-; exit 1\n");
  EXPECT_EQ(send_mail_report(), 0);
  EXPECT_TRUE(error_text.empty());
}

TEST_F(MailDelivery, SaysWhyItCouldNotStart) {
  unsetenv("SKYPOST_ROOT");
  const no_descriptors limit;
  error_text.append_text("left by another network");
  EXPECT_EQ(send_mail_report(), -1);
  EXPECT_STREQ(error_text.c_str(),
               "error pipe open: /opt/sbin/sendmail -C /home/nimbulog/esmtprc borgervejr@dmi.dk 2>&1 | "
               "/usr/bin/logger: Too many open files");
}

TEST_F(MailDelivery, MailsNoStaleData) {
  put_mail_program("cat > mail\n");
  flags.live_data_stale = 1;
  EXPECT_EQ(send_mail_report(), 0);
  EXPECT_FALSE(std::filesystem::exists(mail_path()));
}

}  // namespace
}  // namespace skypost::testing
