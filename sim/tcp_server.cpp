#include "sim/tcp_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace skypost::sim {
namespace {

sockaddr_in address_of(const char* host, std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = inet_addr(host);
  return address;
}

int listen_on(const char* host, std::uint16_t& port, const std::string& purpose, int backlog) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listener < 0) throw std::system_error(errno, std::generic_category(), "socket");
  const int on = 1;
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  sockaddr_in address = address_of(host, port);
  socklen_t length = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, plain, length) != 0 || listen(listener, backlog) != 0) {
    const std::string reason = std::strerror(errno);
    close(listener);
    throw std::runtime_error("port " + std::to_string(port) + " of " + host +
                             " is needed for the simulated " + purpose + ": " + reason +
                             ". Is a demonstration, a test or a real one still running?");
  }
  getsockname(listener, plain, &length);
  port = ntohs(address.sin_port);
  return listener;
}

}  // namespace

void connection::write(std::string_view text) const {
  while (!text.empty()) {
    const ssize_t count = send(descriptor_, text.data(), text.size(), MSG_NOSIGNAL);
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::optional<std::string> connection::read_line() {
  std::size_t end = 0;
  while ((end = pending_.find('\n')) == std::string::npos) {
    char bytes[4096];
    const ssize_t count = recv(descriptor_, bytes, sizeof bytes, 0);
    if (count <= 0) return std::nullopt;
    pending_.append(bytes, static_cast<std::size_t>(count));
  }
  std::string line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

void connection::wait_until_closed() {
  while (read_line()) {
  }
}

full_server::full_server(std::uint16_t port)
    : port_(port), sockets_{listen_on("127.0.0.1", port_, "full server", 0)} {
  const sockaddr_in address = address_of("127.0.0.1", port_);
  // The queue holds one connection. After the second, the kernel ignores all others.
  for (int i = 0; i < 3; ++i) {
    sockets_.push_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // It is never accepted, at most queued.
    (void)connect(sockets_.back(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
  }
}

full_server::~full_server() {
  for (const int socket : sockets_) close(socket);
}

tcp_server::tcp_server(std::uint16_t port, const std::string& purpose, conversation talk, const char* address)
    : talk_(std::move(talk)),
      listener_(listen_on(address, port, purpose, 8)),
      port_(port),
      thread_([this] { serve(); }) {}

tcp_server::~tcp_server() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    shutdown(listener_, SHUT_RDWR);
    if (client_ >= 0) shutdown(client_, SHUT_RDWR);
  }
  thread_.join();
  close(listener_);
}

void tcp_server::serve() {
  for (;;) {
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    {
      const std::lock_guard lock(mutex_);
      if (stopping_ || client < 0) {
        if (client >= 0) close(client);
        return;
      }
      client_ = client;
    }
    connection talking(client);
    talk_(talking);
    const std::lock_guard lock(mutex_);
    close(client);
    client_ = -1;
  }
}

}  // namespace skypost::sim
