#include "base/regular_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace skypost {
namespace {

int refuse(int file, int reason) {
  close(file);
  errno = reason;
  return -1;
}

// Half a text would be written over the old one if the disk filled up in the middle of it. Where the file system
// cannot reserve room (flash and network file systems), the write itself has to find out.
bool has_room(int file, std::size_t size) {
  return fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0 ||
         (errno != ENOSPC && errno != EDQUOT);
}

}  // namespace

int open_regular_file(const char* path, int flags, struct stat& status) {
  const int file = open(path, flags | O_NONBLOCK | O_CLOEXEC, 0666);
  if (file < 0) return -1;
  if (fstat(file, &status) != 0) return refuse(file, errno);
  return S_ISREG(status.st_mode) ? file : refuse(file, ENXIO);
}

int open_shared_file(const char* path) {
  struct stat status {};
  const int file = open_regular_file(path, O_WRONLY | O_CREAT | O_NOFOLLOW, status);
  // The other name may be that of a file in a directory of root's.
  return file >= 0 && status.st_nlink != 1 ? refuse(file, EMLINK) : file;
}

void replace_content(int file, const char* path, std::string_view text) {
  const ssize_t written = has_room(file, text.size()) ? write(file, text.data(), text.size()) : -1;
  if (written > 0) {
    // Only now: a file that was emptied first could be read in between.
    [[maybe_unused]] const int ignored = ftruncate(file, written);
  } else if (lseek(file, 0, SEEK_END) == 0) {
    unlink(path);
  }
  close(file);
}

}  // namespace skypost
