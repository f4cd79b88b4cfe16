#include "common/report_source.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

#include "common/errors.h"
#include "common/kept_text.h"
#include "live/data_server.h"

namespace skypost {
namespace {

std::string without_line_end(std::string line) {
  while (line.ends_with('\n')) line.pop_back();
  return line;
}

}  // namespace

std::string read_report(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string report((std::istreambuf_iterator<char>(file)), {});
  if (!file || file.bad()) throw tool_error(path + ": " + std::strerror(errno));
  if (report.size() >= REPORT_CAPACITY) throw tool_error(path + ": too long for a report");
  return report;
}

std::string fetch_report(bool quiet) {
  static report_buffer report;
  if (!quiet && isatty(STDERR_FILENO) != 0)
    std::fprintf(stderr, "Waiting for the data server (%s:%d) ...\n", DATA_SERVER_HOST, DATA_SERVER_PORT);
  kept_text reason;
  if (fetch_live_data(report, DATA_SERVER_HOST, DATA_SERVER_PORT, reason.stream()) != 0)
    throw tool_error("data server: no report: " + without_line_end(reason.text()));
  return report;
}

}  // namespace skypost
