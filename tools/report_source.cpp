#include "report_source.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

#include "live/data_server.h"
#include "settings_file.h"

namespace skypost {

std::string read_report(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string report((std::istreambuf_iterator<char>(file)), {});
  if (!file || file.bad()) throw tool_error(path + ": " + std::strerror(errno));
  if (report.size() >= REPORT_CAPACITY) throw tool_error(path + ": too long for a report");
  return report;
}

std::string fetch_report() {
  static report_buffer report;
  if (isatty(STDERR_FILENO) != 0)
    std::fprintf(stderr, "Waiting for the data server (%s:%d) ...\n", DATA_SERVER_HOST, DATA_SERVER_PORT);
  // The client has written its reason to standard error.
  if (fetch_live_data(report, DATA_SERVER_HOST, DATA_SERVER_PORT) != 0)
    throw tool_error("the data server has given no report");
  return report;
}

}  // namespace skypost
