#include "sim/data_server.h"

#include "live/data_server.h"

namespace skypost::sim {

data_server::data_server(std::string report)
    : report_(std::move(report)),
      server_(DATA_SERVER_PORT, "data server", [this](connection& client) { talk(client); }) {}

void data_server::set_report(std::string report) {
  const std::lock_guard lock(mutex_);
  report_ = std::move(report);
}

void data_server::talk(connection& client) {
  const int number = ++clients_;
  const behaviour how = behaviour_;
  if (how == behaviour::numbered) client.write("actual_th0_temp_c " + std::to_string(number) + '\n');
  if (how == behaviour::report || how == behaviour::numbered) {
    const std::lock_guard lock(mutex_);
    client.write(report_);
  }
  if (how == behaviour::silence) client.wait_until_closed();
}

}  // namespace skypost::sim
