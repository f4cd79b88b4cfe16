#pragma once

#include <optional>
#include <string>

#include "sim/appliance.h"
#include "sim/aprs_server.h"
#include "sim/data_server.h"
#include "sim/http_peers.h"
#include "sim/smtp_sink.h"

namespace skypost::sim {

// The aprs_ lines of the installed endpoint file: today's APRS servers refuse or discard packets sent without them.
std::string installed_aprs_entries();

// A simulated appliance and everything that the program talks to, connected to each other. Only one can exist at a
// time, because the ports of the data server and CWOP are fixed.
struct world {
  world();

  appliance board;
  std::optional<data_server> data;  // reset() stops a server
  http_peers peers;
  std::optional<aprs_server> cwop;
  std::optional<aprs_server> aprs;
  smtp_sink mail;

  // Writes an endpoint file that names these servers; with `second_servers`, the second ones of MeteoNews and
  // PWSweather. `aprs_entries` are its lines for APRS servers, by default the installed ones.
  void write_endpoints(bool second_servers = false,
                       const std::string& aprs_entries = installed_aprs_entries()) const;
};

// The recipient in the appliance's endpoint file.
inline constexpr char MAIL_RECIPIENT[] = "observations@localhost";

}  // namespace skypost::sim
