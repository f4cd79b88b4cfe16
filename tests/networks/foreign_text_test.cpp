// Texts of the settings and words of the report must never be executed. Each is filled with shell and URL syntax, and
// each network's command is run by a real shell with a recorder in wget's place. Compared with a harmless text of the
// same length, only the text itself may differ in the recorded arguments, and no other program may run.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "common/field_descriptions.h"
#include "live/report_parser.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

constexpr std::string_view FOREIGN[] = {
    "$(canary)",       "`canary`",         "\";canary;\"",   "\\\";canary&x\n",
    "|canary&canary ", "'${IFS}canary'\t", "&a=b#c%00%0a?/", "\x80\x81\x88\xFF\x01\x7F*!<>()[]{}",
};
constexpr char HARMLESS = '~';  // occurs nowhere else in a command

std::string filled(std::string_view pattern, std::size_t length) {
  std::string text;
  while (text.size() < length) text += pattern;
  text.resize(length);
  return text;
}

std::string as_url_value(const std::string& text) { return replaced(replaced(text, "&", "%26"), "#", "%23"); }

class ForeignText : public ::testing::TestWithParam<const upload*> {
 protected:
  void SetUp() override {
    fill_settings(settings_);
    add_program("wget", "for a; do printf '%s\\0' \"$a\"; done > \"${0%/*}/arguments\"");
    add_program("canary", ": > \"${0%/*}/canary_ran\"");
    add_program("tail", "exit 0");
  }

  // Runs the network's command with only these programs in PATH. Returns its arguments, each followed by a NUL.
  std::string arguments(const LiveRecord& live) {
    const std::string command = composed(*GetParam(), settings_, live);
    const std::string recorder = appliance_.path("/bin/wget").string();
    std::filesystem::remove(appliance_.path("/bin/arguments"));
    const std::string line = "PATH=" + appliance_.path("/bin/wget").parent_path().string() + "; " +
                             replaced(command, "/usr/bin/wget", recorder);
    EXPECT_EQ(std::system(line.c_str()), 0) << line;
    return read_whole_file(appliance_.path("/bin/arguments"));
  }

  // `write` puts a text into the station. A foreign text must take exactly the place of the harmless one. Every seventh
  // length ends each text at each of its characters.
  void expect_unaltered(const char* what, std::size_t capacity, LiveRecord& live,
                        const std::function<void(const std::string&)>& write) {
    const std::string harmless(capacity, HARMLESS);
    write(harmless);
    const std::string frame = arguments(live);
    if (frame.find(harmless) == std::string::npos) return;  // not sent, or only as a digest
    for (std::size_t length = 1 + (capacity - 1) % 7; length <= capacity; length += 7) {
      const std::string foreign = filled(FOREIGN[length % std::size(FOREIGN)], length);
      write(foreign);
      const std::string arrived = arguments(live);
      // Values in a URL or form are encoded, the arguments of options are not.
      ASSERT_TRUE(arrived == replaced(frame, harmless, as_url_value(foreign)) ||
                  arrived == replaced(frame, harmless, foreign))
          << what << " of " << length << ": " << foreign << "\n"
          << arrived;
      ASSERT_FALSE(std::filesystem::exists(appliance_.path("/bin/canary_ran"))) << what << ": " << foreign;
    }
    ++texts_sent_;
  }

  settings_record settings_;
  int texts_sent_ = 0;

 private:
  void add_program(const std::string& name, const std::string& script) {
    appliance_.write("/bin/" + name, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(appliance_.path("/bin/" + name), std::filesystem::perms::owner_all);
  }

  appliance_folder appliance_;
};

TEST_P(ForeignText, ArrivesAsItIsAndRunsNothing) {
  LiveRecord live = sparse_station();
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_text()) continue;
    const text_field& slot = row.as_text();
    const std::string before(settings_.text(slot));
    expect_unaltered(row.name, slot.size - 1u, live,
                     [&](const std::string& text) { settings_.set_text(slot, text); });
    settings_.set_text(slot, before);
  }
  EXPECT_GE(texts_sent_, 1);

  // Words of the report go through the parser, which ends them at a blank; no foreign text has one that early.
  live = fully_equipped_station();
  station_settings.set_text(sensor_wind, "wind0");
  for (const char* const key : {"actual_wind0_dir_de ", "actual_wind0_dir_en ",
                                "actual_sunrise_standard_local ", "actual_sunset_standard_local "})
    expect_unaltered(key, sizeof(live_text) - 1, live, [&](const std::string& text) {
      parse_live_reply((key + text).c_str(), station_settings, live_record);
      std::memcpy(live.winddirstr, live_record.winddirstr, sizeof(live_text));
    });
}

std::vector<const upload*> every_command() {
  std::vector<const upload*> commands = every_upload();
  std::erase_if(commands, [](const upload* what) { return what->by != carrier::http; });
  return commands;
}

INSTANTIATE_TEST_SUITE_P(Networks, ForeignText, ::testing::ValuesIn(every_command()),
                         [](const auto& row) { return std::string(row.param->id); });

}  // namespace
}  // namespace skypost::testing
