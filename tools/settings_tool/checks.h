#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "common/settings_file.h"

// What keeps a station's uploads from arriving, in sentences for its owner. No password is in any of them.
namespace skypost {

// All that the checks look at besides the appliance's own files. The process's settings are the file's, as the
// uploader loads them, and its endpoints those of the appliance.
struct checked_appliance {
  settings_file file;
  std::string report;             // of the data server; empty: there is none
  std::string report_fault;       // why there is none
  std::string skipped_endpoints;  // what loading the endpoint file complained about, line by line
  std::string hardware_address;   // of eth0; empty when unknown
  std::string wget;               // its path
  std::time_t now;
  std::time_t built;  // a time that was over when the program was built
  bool online;        // names may be resolved
};

// Each finding is a line: the setting, file or program that it is about, what is wrong, and what to do.
using findings = std::vector<std::string>;

// Every finding, the worst first.
findings findings_of(const checked_appliance& appliance);

}  // namespace skypost
