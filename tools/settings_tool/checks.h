#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "common/settings_file.h"

// Checks what keeps a station's uploads from arriving. Findings are sentences for the owner and contain no password.
namespace skypost {

// How much of the appliance a check can look at; each extent includes those before it. `settings`: the settings file and
// the report. `files`: the other files below $SKYPOST_ROOT. `machine`: its programs, directories, clock and systemd.
enum class extent { settings, files, machine };

// The input of the checks, besides the appliance's own files. `station_settings` must hold the file's settings as the
// uploader loads them, and the appliance's endpoints must be loaded.
struct checked_appliance {
  settings_file file;
  std::string report;            // from the data server; empty if there is none
  std::string report_fault;      // why there is no report
  std::string endpoint_errors;   // printed by load_endpoints(), one per line
  std::string hardware_address;  // of eth0; empty if unknown
  std::string wget;              // the path of wget
  std::string certificates;      // the directory where wget looks for CA certificates
  std::string timer;             // systemd's state of skypost.timer; empty if systemd is not running
  std::string rapid_service;     // of skypost-rapid.service
  std::time_t now;
  std::time_t built;  // not later than the build
  extent at_hand = extent::machine;
  bool online;  // connect to the servers
};

// Each finding is a line that names the setting, file or program, the fault and the remedy.
using findings = std::vector<std::string>;

// Runs all checks. Returns the findings, worst first.
findings findings_of(const checked_appliance& appliance);

// Each check adds its findings to `found`.
#define CHECK(name, needed) void check_##name(const checked_appliance& appliance, findings& found);
#include "settings_tool/checks.def"

}  // namespace skypost
