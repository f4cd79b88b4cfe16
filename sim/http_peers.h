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

enum class reply_kind { good, bad, empty, hang };

struct request_seen {
  const network_row* network;
  std::string request;  // method, target and, after a line feed, the body
  std::string fault;    // what is wrong with it; empty if nothing is
  std::string reply;
};

// One HTTP server on a free port for each server of a network. It judges requests as the network would, and sends the
// bad reply to a faulty one.
class http_peers {
 public:
  // Creates `certificate`, and its key beside it, for the https servers.
  explicit http_peers(const std::filesystem::path& certificate);
  ~http_peers();

  void set_reply(reply_kind how);                           // for all networks
  void set_reply(const std::string& name, reply_kind how);  // for one network

  // Returns lines for the endpoint file. Of the networks that have two servers under one name, `second_servers` selects
  // the second: MeteoNews' for an NSLU2, by plain http, and PWSweather's newer one.
  std::string endpoints(bool second_servers = false) const;

  std::vector<request_seen> requests() const;
  void forget_requests();

 private:
  struct peer;

  void start(peer& one);
  void respond(const peer& one, const httplib::Request& request, httplib::Response& response);

  mutable std::mutex mutex_;
  std::condition_variable released_;
  bool stopping_ = false;  // guarded by the mutex, like all members below
  std::vector<request_seen> requests_;
  std::vector<std::unique_ptr<peer>> peers_;
};

}  // namespace skypost::sim
