#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "common/settings_file.h"

// What keeps a station's uploads from arriving, in sentences for its owner that contain no password.
namespace skypost {

// What the checks look at besides the appliance's own files. `station_settings` must hold the file's settings as the
// uploader loads them, and the endpoints must be the appliance's.
struct checked_appliance {
  settings_file file;
  std::string report;            // of the data server; empty: there is none
  std::string report_fault;      // why there is none
  std::string endpoint_errors;   // of loading the endpoint file, one per line
  std::string hardware_address;  // of eth0; empty if unknown
  std::string wget;              // its path
  std::string certificates;      // the directory in which it looks for those of certification authorities
  std::string timer;             // what systemd says of skypost.timer; empty if it does not run here
  std::time_t now;
  std::time_t built;            // a time no later than the build
  bool online;                  // servers may be connected to
  bool shows_progress = false;  // on standard error
};

// Each finding is a line: the setting, file or program that it is about, what is wrong, and what to do.
using findings = std::vector<std::string>;

// Every finding, worst first.
findings findings_of(const checked_appliance& appliance);

// The checks. Each adds its findings to `found`.
#define CHECK(name) void check_##name(const checked_appliance& appliance, findings& found);
#include "settings_tool/checks.def"

}  // namespace skypost
