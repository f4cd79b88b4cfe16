#pragma once

#include <atomic>
#include <string>

#include "sim/tcp_server.h"

namespace skypost::sim {

// The appliance's data server, on its fixed port: sends the report to each client and closes.
class data_server {
 public:
  enum class behaviour {
    report,
    numbered,  // the outdoor temperature is the client's number, counted from 1
    nothing,   // closes without sending a byte
    silence,   // sends nothing, does not close
  };

  explicit data_server(std::string report);

  void set_report(std::string report);
  void set_behaviour(behaviour how) { behaviour_ = how; }
  int clients() const { return clients_; }

 private:
  void talk(connection& client);

  std::mutex mutex_;
  std::string report_;  // guarded by the mutex
  std::atomic<behaviour> behaviour_ = behaviour::report;
  std::atomic<int> clients_ = 0;
  tcp_server server_;
};

}  // namespace skypost::sim
