#include "settings_tool/program_fault.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace skypost {

std::string program_fault(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  return faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0 ? "" : std::strerror(errno);
}

}  // namespace skypost
