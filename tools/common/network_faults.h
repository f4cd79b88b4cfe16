#pragma once

#include <string>
#include <vector>

#include "common/networks.h"
#include "live/station.h"

// What is wrong with the settings of a network. `source` is the station whose settings are looked at; its values do not
// matter. Nothing here contains a secret.
namespace skypost {

// A server that an upload connects to.
struct called_server {
  std::string scheme;    // "http" or "https"; empty for APRS
  std::string host;      // without a port
  std::string address;   // "https://example.org:8080"; for APRS, "example.org:14580"
  std::string named_by;  // where to change it: "windit in /etc/skypost/endpoints"
  const char* title = "server";
  const char* loss = "nothing reaches it";  // consequence for the network if this server is unreachable
  bool is_certificate_checked = true;

  bool is_known() const { return !host.ends_with(".invalid"); }
};

// The servers that the upload connects to, except refused ones and those that are not set. Rapid fire has none where it
// uses the server of the step's own upload.
std::vector<called_server> servers_of(const handed_out& one, const station& source);

// The setting that holds the call sign of an APRS upload.
const text_field& call_sign_of(const upload& upload);

struct network_fault {
  enum {
    stops,
    loses,
    doubtful
  } weight;          // a run sends nothing; the upload cannot arrive, or not whole; it may
  std::string text;  // one line: the setting, what is wrong, what follows, what to do
  bool is_of_endpoint_file = false;
};

// Everything that is wrong with what the owner has entered for the upload. Refused lines of the endpoint file are not
// among it.
std::vector<network_fault> faults_of(const handed_out& one, const station& source);

// "47°03.50' N, 8°18.00' E", as APRS packets have it. Empty if the upload contains no position, or a wrong one.
std::string position_in(const upload& upload, const settings_record& settings);

}  // namespace skypost
