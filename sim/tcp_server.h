#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace skypost::sim {

// One client's connection to a simulated server.
class connection {
 public:
  explicit connection(int descriptor) : descriptor_(descriptor) {}

  void write(std::string_view text) const;
  // Returns the next line without its line end; nullopt once the client has closed.
  std::optional<std::string> read_line();
  void wait_until_closed();

 private:
  int descriptor_;
  std::string pending_;
};

// A server on this machine that serves one client at a time, in its own thread, until it is destroyed. Declare it as
// the last member, so that the thread ends before what it uses.
class tcp_server {
 public:
  using conversation = std::function<void(connection&)>;

  // `port` 0 takes any free port. Throws a readable error if the port is in use.
  tcp_server(std::uint16_t port, const std::string& purpose, conversation talk,
             const char* address = "127.0.0.1");
  ~tcp_server();
  tcp_server(const tcp_server&) = delete;
  tcp_server& operator=(const tcp_server&) = delete;

  std::uint16_t port() const { return port_; }

 private:
  void serve();

  conversation talk_;
  int listener_;
  std::uint16_t port_;
  std::mutex mutex_;
  int client_ = -1;  // guarded by the mutex
  bool stopping_ = false;
  std::thread thread_;
};

// A server on this machine whose queue is full: further connections are neither accepted nor refused.
class full_server {
 public:
  explicit full_server(std::uint16_t port = 0);
  ~full_server();
  full_server(const full_server&) = delete;
  full_server& operator=(const full_server&) = delete;

  std::uint16_t port() const { return port_; }

 private:
  std::uint16_t port_;
  std::vector<int> sockets_;
};

}  // namespace skypost::sim
