#pragma once

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "sim/networks.h"

namespace httplib {
struct Request;
struct Response;
class Server;
}  // namespace httplib

namespace skypost::sim {

enum class answer { good, bad, empty, hang };

// One request as a peer saw it.
struct request_seen {
  const network_row* network;
  std::string request;  // method, target and, after a line feed, the body
  std::string fault;    // what is wrong with it; empty: nothing
  std::string reply;    // what it was answered
};

// One HTTP server on a free port for each network's server. Each judges a request as its network would,
// and answers a faulty one with the network's bad answer.
class http_peers {
 public:
  // `certificate` and its key are made there by `openssl`, for the secured ones.
  explicit http_peers(const std::filesystem::path& certificate);
  ~http_peers();

  void set_answer(answer how);                           // of all
  void set_answer(const std::string& name, answer how);  // of one network's servers

  // The lines of the endpoint file; with `on_nslu2` they name MeteoNews' plain server.
  std::string endpoints(bool on_nslu2 = false) const;

  std::vector<request_seen> requests() const;
  void forget_requests();

 private:
  struct peer;

  void start(peer& one);
  void respond(const peer& one, const httplib::Request& request, httplib::Response& response);

  mutable std::mutex mutex_;
  std::condition_variable released_;
  bool stopping_ = false;  // guarded by the mutex, as is all below
  std::vector<request_seen> requests_;
  std::vector<std::unique_ptr<peer>> peers_;
};

}  // namespace skypost::sim
