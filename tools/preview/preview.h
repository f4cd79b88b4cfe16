#pragma once

#include <string>
#include <vector>

#include "common/network_faults.h"
#include "common/request_parts.h"
#include "live/station.h"
#include "preview/missing_values.h"

namespace skypost {

// What one upload would send now, in the owner's terms. Either `request` or `text` is set.
struct step_preview {
  std::string network;  // "Weather Underground, rapid fire"
  std::string name;     // "weather underground rapid fire", as failures and skypost-status call it
  std::string id;       // "wunderground_rapid"
  std::string how;      // "GET", "POST", "file", "APRS packet", "mail"
  std::vector<std::string> where;
  std::string position;               // in the text; empty if there is none
  std::vector<network_fault> faults;  // worst first
  request_parts request;
  std::string text;
  std::vector<missing_value> missing;

  bool would_be_sent() const { return faults.empty() || faults[0].weight == network_fault::doubtful; }
};

struct preview_page {
  std::string settings;  // the file
  std::string report;    // the file, or the data server
  std::string time;
  std::vector<std::string> warnings;  // about the settings file and the endpoint file
  std::vector<step_preview> steps;
  std::string fault{};  // why there is no preview; empty if there is one
};

// The input of previews. `station_settings` must hold the same settings as `source`.
struct preview_inputs {
  station source;
  const char* report;      // the source of the live record
  long long last_run_age;  // in seconds
  bool with_secrets;       // show passwords
};

// Previews all uploads that are switched on, in the order of a run, each rapid-fire variant after its step's own
// upload. If `names` (upload ids or network names) is not empty, previews those instead, on or off. Throws usage_error
// if a name is unknown.
std::vector<step_preview> make_previews(const preview_inputs& inputs, const std::vector<std::string>& names);

// Throws usage_error if a name is unknown.
void check_networks(const std::vector<std::string>& names);

}  // namespace skypost
