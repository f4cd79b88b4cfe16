#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

#include "sim/tcp_server.h"

namespace skypost::sim {

struct aprs_session_seen {
  std::string login;
  std::string packet;
  std::string reply;
  bool accepted;
};

// An APRS-IS server: greets, reads a login and a packet, and replies to the login.
class aprs_server {
 public:
  aprs_server(std::uint16_t port, std::string call_sign, int passcode);

  std::uint16_t port() const { return server_.port(); }
  std::vector<aprs_session_seen> sessions() const;
  // How long it waits before replying to a login; at first not at all.
  void reply_after(std::chrono::milliseconds delay) { delay_ = delay; }

 private:
  void talk(connection& client);

  std::string call_sign_;
  int passcode_;
  std::atomic<std::chrono::milliseconds> delay_ = std::chrono::milliseconds(0);
  mutable std::mutex mutex_;
  std::vector<aprs_session_seen> sessions_;  // guarded by the mutex
  tcp_server server_;
};

}  // namespace skypost::sim
