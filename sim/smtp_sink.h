#pragma once

#include <string>
#include <vector>

#include "sim/tcp_server.h"

namespace skypost::sim {

struct mail_seen {
  std::string sender;     // of the envelope
  std::string recipient;  // of the envelope
  std::string text;       // header, empty line, body; lines end in LF
};

// A mail server that accepts every message and keeps it.
class smtp_sink {
 public:
  smtp_sink();

  std::uint16_t port() const { return server_.port(); }
  std::vector<mail_seen> mails() const;

 private:
  void talk(connection& client);

  mutable std::mutex mutex_;
  std::vector<mail_seen> mails_;  // guarded by the mutex
  tcp_server server_;
};

}  // namespace skypost::sim
