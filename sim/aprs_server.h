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
  std::string fate;  // RELAYED, or why the server refused or discarded the packet

  bool is_relayed() const { return fate == RELAYED; }
  static constexpr char RELAYED[] = "relayed";
};

// Whose rules a server follows.
enum class aprs_network {
  // The general pool, as of 2026: a login needs a version after the software's name, and only packets of verified
  // stations with the path TCPIP* are relayed.
  general,
  // CWOP's own servers relay unverified stations. Their other rules are not known, so they accept any login.
  cwop,
};

// An APRS-IS server: greets, reads a login, replies to it, and reads a packet. Sends no reply to the packet.
class aprs_server {
 public:
  // A station that logs in with `passcode` is verified.
  aprs_server(aprs_network network, std::uint16_t port, std::string call_sign, int passcode);

  std::uint16_t port() const { return server_.port(); }
  std::vector<aprs_session_seen> sessions() const;
  // Sets how long the server waits before it replies to a login.
  void reply_after(std::chrono::milliseconds delay) { delay_ = delay; }

 private:
  void talk(connection& client);
  std::string reply_to(const std::string& login) const;
  std::string fate_of(const std::string& login, const std::string& packet) const;

  aprs_network network_;
  std::string call_sign_;
  int passcode_;
  std::atomic<std::chrono::milliseconds> delay_ = std::chrono::milliseconds(0);
  mutable std::mutex mutex_;
  std::vector<aprs_session_seen> sessions_;  // guarded by the mutex
  tcp_server server_;
};

}  // namespace skypost::sim
