#pragma once

#include <optional>

#include "sim/appliance.h"
#include "sim/aprs_server.h"
#include "sim/data_server.h"
#include "sim/http_peers.h"
#include "sim/smtp_sink.h"

namespace skypost::sim {

// A simulated appliance and everything that the program talks to, wired to each other. Only one can
// be there at a time: the data server's port and CWOP's are fixed.
struct world {
  world();

  appliance board;
  std::optional<data_server> data;  // a server that is reset is no longer there
  http_peers peers;
  std::optional<aprs_server> cwop;
  std::optional<aprs_server> aprs;
  smtp_sink mail;

  // Points the appliance to these servers, MeteoNews to the one that the board's kind asks.
  void write_endpoints(bool on_nslu2 = false) const;
};

// The recipient in the appliance's endpoint file.
inline constexpr char MAIL_RECIPIENT[] = "observations@localhost";

}  // namespace skypost::sim
