#include "common/report_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "common/errors.h"
#include "common/kept_text.h"
#include "live/data_server.h"

namespace skypost {
namespace {

std::string data_server() {
  return std::string("the data server at ") + DATA_SERVER_HOST + ':' + std::to_string(DATA_SERVER_PORT);
}

// Turns the error message "error STEP socket ...:REASON" into a sentence for the owner.
std::string sentence_of(std::string_view complaint) {
  constexpr std::string_view START = "error ";
  if (complaint.starts_with(START)) complaint.remove_prefix(START.size());
  if (complaint.ends_with('\n')) complaint.remove_suffix(1);
  const std::string step(complaint.substr(0, complaint.find(' ')));
  complaint.remove_prefix(complaint.rfind(':') + 1);
  if (complaint.starts_with(' ')) complaint.remove_prefix(1);
  const std::string reason(complaint);
  if (step == "read" && reason == std::strerror(0))
    return data_server() + " closed the connection without a report";
  return data_server() + " does not answer (" + step + ": " + reason + ')';
}

using open_file = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

// Opening a FIFO would block without O_NONBLOCK.
open_file open_regular_file(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  open_file file(descriptor < 0 ? nullptr : fdopen(descriptor, "r"), &std::fclose);
  struct stat status {};
  if (file == nullptr || fstat(descriptor, &status) != 0)
    throw tool_error(path + ": " + std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw tool_error(path + ": not a regular file");
  return file;
}

}  // namespace

std::string read_report(const std::string& path) {
  const open_file file = open_regular_file(path);
  std::string report(REPORT_CAPACITY, '\0');
  report.resize(std::fread(report.data(), 1, report.size(), file.get()));
  if (std::ferror(file.get()) != 0) throw tool_error(path + ": " + std::strerror(errno));
  if (report.size() >= REPORT_CAPACITY) throw tool_error(path + ": too long for a report");
  report.resize(std::strlen(report.c_str()));  // a NUL ends the report, as in the uploader
  if (report.empty()) throw tool_error(path + ": empty");
  return report;
}

std::string fetch_report(bool quiet) {
  static report_buffer report;
  if (!quiet && isatty(STDERR_FILENO) != 0)
    std::fprintf(stderr, "Waiting for the data server (%s:%d) ...\n", DATA_SERVER_HOST, DATA_SERVER_PORT);
  kept_text complaint;
  if (fetch_live_data(report, DATA_SERVER_HOST, DATA_SERVER_PORT, complaint.stream()) != 0)
    throw tool_error(sentence_of(complaint.text()));
  if (*report == '\0') throw tool_error(data_server() + " sent an empty report");
  return report;
}

}  // namespace skypost
