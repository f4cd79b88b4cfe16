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

// Reserves room for the text, so a disk that fills up does not leave half of it over the old one. If the file
// system cannot reserve space, a full disk shows only when write() fails.
bool has_room(int file, std::size_t size) {
  return fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0 ||
         (errno != ENOSPC && errno != EDQUOT);
}

}  // namespace

int open_regular_file(const char* path, int flags, struct stat& found) {
  const int file = open(path, flags | O_NONBLOCK | O_CLOEXEC, 0666);
  if (file < 0) {
    // With O_NOFOLLOW, open() itself reports ELOOP.
    if (errno == ENOENT && (flags & O_NOFOLLOW) == 0 && lstat(path, &found) == 0) errno = ELOOP;
    return -1;
  }
  if (fstat(file, &found) != 0) return refuse(file, errno);
  return S_ISREG(found.st_mode) ? file : refuse(file, S_ISDIR(found.st_mode) ? EISDIR : ENXIO);
}

int open_sole_file(const char* path, int flags) {
  struct stat found {};
  const int file = open_regular_file(path, flags | O_NOFOLLOW, found);
  // The file's other name could be one of root's own files.
  return file >= 0 && found.st_nlink != 1 ? refuse(file, EMLINK) : file;
}

int open_shared_file(const char* path) { return open_sole_file(path, O_WRONLY | O_CREAT); }

int replace_content(int file, const char* path, std::string_view text) {
  const ssize_t written = has_room(file, text.size()) ? write(file, text.data(), text.size()) : -1;
  const int reason = written < 0 ? errno : ENOSPC;
  if (written > 0) {
    // Only after the write: a reader must not find the file empty.
    [[maybe_unused]] const int ignored = ftruncate(file, written);
  } else if (lseek(file, 0, SEEK_END) == 0) {
    unlink(path);
  }
  close(file);
  if (written == static_cast<ssize_t>(text.size())) return 0;
  errno = reason;
  return -1;
}

}  // namespace skypost
