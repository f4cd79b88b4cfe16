#pragma once

#include <string>
#include <vector>

#include "common/request_parts.h"
#include "live/station.h"
#include "preview/missing_values.h"

namespace skypost {

// What one step would hand out now, as its owner reads it. Of `request` and `text` one is filled.
struct step_preview {
  std::string network;  // "Weather Underground, rapid fire"
  std::string id;       // "wunderground_rapid"
  std::string how;      // "GET", "POST", "file", "APRS packet", "mail"
  std::vector<std::string> where;
  std::vector<std::string> obstacles;  // why nothing is sent; empty: it is sent
  std::vector<std::string> warnings;   // why it will not arrive
  request_parts request;
  std::string text;
  std::vector<missing_value> missing;
  std::vector<std::string> unset;  // settings that would be sent if they were not empty

  bool would_be_sent() const { return obstacles.empty() && warnings.empty(); }
};

// All that is shown, with what it was made from.
struct preview_page {
  std::string settings;  // the file
  std::string report;    // the file, or the data server
  std::string time;
  std::vector<std::string> warnings;  // of the settings file and of what is skipped of the endpoint file
  std::vector<step_preview> steps;
};

// What previews are made from. The process's settings are the same ones, as in a run.
struct preview_source {
  station from;
  const char* report;      // that the live record was made from
  long long last_run_age;  // in seconds
  bool with_secrets;       // they are shown, not hidden
};

// A preview of every step that is switched on, in the order of a run, each with its rapid-fire form after it
// where that is on as well. With `names`, of what they name instead, on or off: each is an id or the name of a
// network. Throws usage_error when there is nothing of that name.
std::vector<step_preview> make_previews(const preview_source& source, const std::vector<std::string>& names);

// Throws as make_previews does, without making any.
void check_networks(const std::vector<std::string>& names);

}  // namespace skypost
