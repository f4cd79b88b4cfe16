#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "base/paths.h"
#include "common/descriptor.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled_steps.h"

namespace skypost {
namespace {

constexpr std::size_t BLOCK = 4'096;  // bytes; no pull file is longer

// Writes a block to a new file in `directory`. Returns 0 or an errno. The file is unlinked before the write, so a check
// that is killed leaves an empty file at most.
int try_to_write(const std::string& directory) {
  std::string name = directory + ".skypost-check.XXXXXX";
  const descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file.is_open()) return errno;
  unlink(name.c_str());
  const std::string block(BLOCK, 'x');
  errno = ENOSPC;  // a short write sets no errno
  const bool is_whole = write(file.number(), block.data(), block.size()) == ssize_t{BLOCK};
  return is_whole && fsync(file.number()) == 0 ? 0 : errno;
}

// `fault` is an errno.
std::string finding_of(const std::string& path, int fault, const std::string& networks) {
  const std::string reason = std::string(" (") + std::strerror(fault) + "), so ";
  if (fault == ENOSPC || fault == EDQUOT)
    return path + ": its disk is full" + reason + "new values may not reach " + networks +
           ". Make room on it.";
  return path + ": no file can be written there" + reason + "no new files reach " + networks +
         ". Make it a directory that skypost can write to.";
}

}  // namespace

void check_pull_directories(const checked_appliance&, findings& found) {
  const std::string networks = networks_by(carrier::file);
  if (networks.empty()) return;
  for (const char* const directory : PULL_DIRECTORIES) {
    const std::string path = appliance_path(directory);
    if (const int fault = try_to_write(path); fault != 0) found.push_back(finding_of(path, fault, networks));
  }
}

}  // namespace skypost
