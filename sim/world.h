#pragma once

#include <optional>
#include <string>

#include "sim/appliance.h"
#include "sim/aprs_server.h"
#include "sim/data_server.h"
#include "sim/http_peers.h"
#include "sim/smtp_sink.h"

namespace skypost::sim {

// The entries of the installed endpoint file: today's APRS servers refuse or discard what is sent without them.
std::string installed_aprs_entries();

// A simulated appliance and everything that the program talks to, connected to each other. Only one can exist at a
// time, since the ports of the data server and CWOP are fixed.
struct world {
  world();

  appliance board;
  std::optional<data_server> data;  // reset() stops a server
  http_peers peers;
  std::optional<aprs_server> cwop;
  std::optional<aprs_server> aprs;
  smtp_sink mail;

  // Points the appliance to these servers, to the second ones of MeteoNews and PWSweather if wanted. `aprs_entries` are
  // those with which the program logs in to APRS servers; by default the installed ones.
  void write_endpoints(bool second_servers = false,
                       const std::string& aprs_entries = installed_aprs_entries()) const;
};

// The recipient in the appliance's endpoint file.
inline constexpr char MAIL_RECIPIENT[] = "observations@localhost";

}  // namespace skypost::sim
