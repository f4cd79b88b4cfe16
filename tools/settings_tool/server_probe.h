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
  not_trusted,  // certificate
  refused,      // APRS login
  unverified,   // APRS login; packets are dropped
};

struct contact_result {
  contact outcome;
  std::string words;  // the reason, without secrets; often empty
};

// Connects to a server in a child process, as a run would, but sends no values: wget requests only the front page, and
// an APRS server gets only the login line.
class server_probe {
 public:
  // `server` must outlive the probe. `wget` is the path of wget.
  server_probe(const online_server& server, const std::string& wget);

  bool has_ended() { return child_.has_ended(); }

  // The result of what the probe has seen so far.
  contact_result result();

 private:
  static constexpr std::size_t REPLY_SIZE = 1'000;

  struct seen_so_far {
    bool is_name_resolved = false;  // or the lookup has failed
    int name_fault = 0;             // getaddrinfo's error
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
