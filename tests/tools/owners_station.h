#pragma once

#include <string>

#include "common/tool.h"
#include "settings/record.h"
#include "support/appliance_folder.h"
#include "support/station.h"

namespace skypost::testing {

// A station for the owner's tools: every network is on and has all that it needs.
struct owners_station {
  owners_station();
  ~owners_station();
  owners_station(const owners_station&) = delete;
  owners_station& operator=(const owners_station&) = delete;

  // Executes a line of a session, then saves the settings if they changed. Paths are the appliance's; escapes such as
  // "\n" and "\xff" stand for bytes. Throws for an unknown verb.
  //   set NAME=VALUE           sets one setting            only SWITCH...           switches all others off
  //   endpoint LINE            appended to the file        first-endpoint LINE      inserted before all others
  //   report KEY [VALUE]       removed without a value     report-file TEXT         replaces the whole report
  //   write PATH TEXT          program PATH TEXT           folder PATH              remove PATH
  //   environment NAME VALUE   until the station's end
  //   mode OCTAL PATH          foreign: other byte order   size BYTES               gap-missing: an unlisted layout
  //   platform NAME            the kind of board           hardware-address [ADDRESS]
  void change(const std::string& line);

  void save() const;

  // Runs a tool with the arguments in `line`, which may be quoted with ''. Returns its output, and its exit status
  // unless that is 0. Fails the test if a tool that failed changed the settings file.
  std::string run(const tool& program, const std::string& line);

  // The text without the appliance's folder in front of paths.
  std::string without_root(std::string text) const;

  appliance_folder folder;
  std::string file = folder.path("/home/nimbulog/nimbulog.conf");
  settings_record settings;
  std::string report;
  std::string platform = "X86";
  std::string hardware_address = ORDINARY_BOARD.hardware_address;

 private:
  std::size_t size_ = SETTINGS_SIZE;
  bool is_gap_missing_ = false;
  std::string endpoints_;
};

// Replays a session of one of the owner's tools: "# " begins a new station, "+ " changes it, "$" runs the tool.
void expect_tool_session(const std::string& name, const tool& program);

}  // namespace skypost::testing
