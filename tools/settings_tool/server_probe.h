#pragma once

#include <netdb.h>

#include <string>

#include "common/child_process.h"
#include "common/shared_value.h"
#include "settings_tool/online_servers.h"

namespace skypost {

enum class contact {
  good,
  name_server_silent,
  name_not_found,
  not_reached,
  silent,
  not_trusted,  // its certificate
  refused,      // the login of APRS
  unverified,   // the same: its packets are dropped
};

struct contact_result {
  contact outcome;
  std::string words;  // why, without secrets; often empty
};

// Connects to a server in a child process, as a run would but without sending a value: with wget to the host alone, or to
// an APRS server with the login line alone.
class server_probe {
 public:
  // `wget` is its path.
  server_probe(const online_server& server, const std::string& wget);

  bool has_ended() { return child_.has_ended(); }

  // What has been seen so far.
  contact_result result();

 private:
  static constexpr std::size_t REPLY_SIZE = 1'000;

  struct seen_so_far {
    bool is_name_resolved = false;  // or known not to be
    int name_fault = 0;             // of getaddrinfo
    bool is_connected = false;      // to an APRS server
    int connect_fault = 0;          // errno
    fixed_text<REPLY_SIZE> reply;
  };

  int resolve(addrinfo*& addresses) const;
  int call_wget(const std::string& wget) const;
  int connect_to(const addrinfo& address) const;
  int log_in() const;
  contact_result result_of_wget();
  contact_result result_of_login();

  const online_server& server_;
  shared_value<seen_so_far> seen_;
  child_process child_;
};

}  // namespace skypost
