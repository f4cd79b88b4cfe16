#pragma once

#include <optional>

#include "sim/appliance.h"
#include "sim/aprs_server.h"
#include "sim/data_server.h"
#include "sim/http_peers.h"
#include "sim/smtp_sink.h"

namespace skypost::sim {

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

  // Points the appliance to these servers, and MeteoNews to the one this kind of board uses.
  void write_endpoints(bool on_nslu2 = false) const;
};

// The recipient in the appliance's endpoint file.
inline constexpr char MAIL_RECIPIENT[] = "observations@localhost";

}  // namespace skypost::sim
