#include "common/settings_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "base/board.h"
#include "base/paths.h"
#include "common/errors.h"
#include "settings/byte_order.h"
#include "settings/load.h"

namespace skypost {
namespace {

[[noreturn]] void fail(const std::string& path) { throw tool_error(path + ": " + std::strerror(errno)); }

// Deletes the file at the end unless keep() was called.
class unfinished_file {
 public:
  explicit unfinished_file(std::string path) : path_(std::move(path)) {}
  ~unfinished_file() {
    if (!path_.empty()) unlink(path_.c_str());
  }
  unfinished_file(const unfinished_file&) = delete;
  unfinished_file& operator=(const unfinished_file&) = delete;
  void keep() { path_.clear(); }

 private:
  std::string path_;
};

std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  if (real == nullptr) fail(path);
  return real.get();
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// Writes `count` bytes and waits until they are on disk.
bool write_through(int file, const unsigned char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t written = write(file, bytes, count);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return fsync(file) == 0;
}

// Makes a rename durable. Errors are ignored, because the new file is already in place.
void flush_folder_of(const std::string& path) {
  const descriptor folder(open(folder_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.is_open()) fsync(folder.number());
}

// Opening a FIFO would block without O_NONBLOCK.
int open_to_read(const std::string& path) { return open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }

// True if the path still names the open file, and not one that was renamed into its place.
bool is_in_place(const descriptor& file, const std::string& path) {
  struct stat locked {};
  struct stat named {};
  return fstat(file.number(), &locked) == 0 && stat(path.c_str(), &named) == 0 &&
         locked.st_dev == named.st_dev && locked.st_ino == named.st_ino;
}

// Programs that do not take the lock, such as the web pages, may have written since.
void refuse_if_changed(const settings_file& before) {
  const settings_file now = read_settings_file(before.path);
  if (now.size != before.size || std::memcmp(now.image.bytes, before.image.bytes, SETTINGS_SIZE) != 0)
    throw tool_error(before.path + ": somebody else has just changed it; nothing was set, try again");
}

// The uploader takes a reversed 1 for on; a person should see a 1. No switch holds so much that the smaller of the two
// values could be the wrong one.
void restore_reversed_switches(settings_record& record) {
  for (const integer_field& flag : NEVER_CONVERTED) {
    const std::uint32_t value = record.unsigned_integer(flag);
    record.set_integer(flag, static_cast<std::int32_t>(std::min(value, __builtin_bswap32(value))));
  }
}

}  // namespace

const char* platform() {
  const char* const named = std::getenv(PLATFORM_VARIABLE);
  if (named == nullptr || *named == '\0') detect_platform();
  return std::getenv(PLATFORM_VARIABLE);
}

std::string appliance_path(const char* path) { return path_text(path).c_str(); }

std::string appliance_settings_path() { return appliance_path(SETTINGS_PATH); }

settings_file read_settings_file(const std::string& path) {
  settings_file result;
  result.path = resolved(path);
  const descriptor file(open_to_read(result.path));
  struct stat status {};
  if (!file.is_open() || fstat(file.number(), &status) != 0) fail(path);
  if (!S_ISREG(status.st_mode)) throw tool_error(path + ": not a regular file");
  if (status.st_size == 0) throw tool_error(path + ": empty");

  result.size = status.st_size;
  result.owner = status.st_uid;
  result.group = status.st_gid;
  result.mode = status.st_mode & 07777;
  const ssize_t count = read(file.number(), result.image.bytes, SETTINGS_SIZE);
  if (count < 0) fail(path);
  if (count != std::min<std::int64_t>(result.size, SETTINGS_SIZE))
    throw tool_error(path + ": changed while being read");
  return result;
}

std::string layout_of(const settings_file& file) {
  std::string name = "current";
  if (is_size_unlisted(file.size, platform()))
    name = "unlisted size";
  else if (file.size == OLDER_LAYOUT_SIZE)
    name = "older";
  else if (file.size == OLDER_PLUG_LAYOUT_SIZE)
    name = "older PLUG";
  return name + ", " + std::to_string(file.size) + " bytes";
}

std::vector<std::string> faults_of_layout(const settings_file& file) {
  std::vector<std::string> faults;
  if (is_size_unlisted(file.size, platform()))
    faults.push_back(file.path + ": its size of " + std::to_string(file.size) +
                     " bytes matches no known layout, so the"
                     " settings may be read wrongly, and each run copies the file to " +
                     file.path + ".old. Save the settings again from the web pages.");
  if (is_byte_order_foreign(file.image, platform()))
    faults.push_back(
        file.path +
        ": its numbers are in the byte order of another kind of board and are converted by"
        " each run. If \"skypost-settings show\" shows wrong numbers, save the settings again from"
        " the web pages.");
  return faults;
}

settings_record as_loaded(const settings_file& file) {
  settings_record record = file.image;
  if (file.size < SETTINGS_SIZE) complete_short_record(record, static_cast<std::uint32_t>(file.size));
  adapt_image(record, is_size_unlisted(file.size, platform()), platform());
  restore_reversed_switches(record);
  return record;
}

void create_settings_file(const std::string& path, const settings_record& record) {
  const descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file.is_open()) fail(path);
  unfinished_file unfinished(path);
  if (!write_through(file.number(), record.bytes, SETTINGS_SIZE)) fail(path);
  unfinished.keep();
  flush_folder_of(path);
}

descriptor lock_settings_file(const std::string& path) {
  for (;;) {
    descriptor file(open_to_read(path));
    if (!file.is_open() || flock(file.number(), LOCK_EX) != 0) fail(path);
    if (is_in_place(file, path)) return file;
  }
}

void replace_settings_file(const settings_file& file, const settings_record& image) {
  std::string name = file.path + ".XXXXXX";
  const descriptor replacement(mkostemp(name.data(), O_CLOEXEC));
  if (!replacement.is_open()) fail(folder_of(file.path));
  unfinished_file unfinished(name);
  // fchmod() after fchown(), which clears the set-ID bits.
  if (fchown(replacement.number(), file.owner, file.group) != 0 ||
      fchmod(replacement.number(), file.mode) != 0 ||
      !write_through(replacement.number(), image.bytes, static_cast<std::size_t>(file.size)))
    fail(file.path);
  refuse_if_changed(file);
  if (rename(name.c_str(), file.path.c_str()) != 0) fail(file.path);
  unfinished.keep();
  flush_folder_of(file.path);
}

}  // namespace skypost
