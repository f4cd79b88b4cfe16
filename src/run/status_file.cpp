#include "run/status_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/error_text.h"
#include "base/paths.h"
#include "base/regular_file.h"

namespace skypost {
namespace {

constexpr char MAGIC[sizeof status_image::magic] = "skypost";
constexpr std::uint32_t VERSION = 1;
constexpr ssize_t SIZE = sizeof(status_image);
constexpr std::int32_t HIGHEST_EXIT_STATUS = 255;

// Of the records.
constexpr const char* NAMES[STATUS_RECORDS] = {
    "skypost",
#define STEP(name, ...) name,
#define RAPID_FIRE(name, ...) name,
#include "run/run_list.def"
};

consteval bool names_fit() {
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) {
    const std::string_view name = NAMES[i];
    if (name.size() >= sizeof status_record::name) return false;
    for (std::size_t j = 0; j < i; ++j)
      if (name == NAMES[j]) return false;
  }
  return true;
}
static_assert(names_fit(), "a name of run_list.def is there twice, or too long for the status file");

struct flock range_of(status_keeper keeper) {
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(keeper);
  range.l_len = 1;
  return range;
}

void empty_record(status_record& record, const char* name) {
  std::memset(&record, 0, sizeof record);
  std::memcpy(record.name, name, std::strlen(name));
  record.wget_status = NO_WGET_STATUS;
}

void empty_image(status_image& image) {
  std::memcpy(image.magic, MAGIC, sizeof MAGIC);
  image.version = VERSION;
  image.count = STATUS_RECORDS;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) empty_record(image.records[i], NAMES[i]);
}

bool is_of_this_program(const status_image& image) {
  if (std::memcmp(image.magic, MAGIC, sizeof MAGIC) != 0 || image.version != VERSION ||
      image.count != STATUS_RECORDS)
    return false;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (std::strncmp(image.records[i].name, NAMES[i], sizeof status_record::name) != 0) return false;
  return true;
}

bool is_plausible(const status_record& record) {
  return record.begun >= 0 && record.ended >= 0 && record.last_good >= 0 &&
         record.wget_status >= NO_WGET_STATUS && record.wget_status <= HIGHEST_EXIT_STATUS &&
         record.outcome <= static_cast<std::uint32_t>(status_outcome::no_outdoor_data);
}

}  // namespace

int open_status_file(int access, std::int64_t& size) {
  const path_text path(STATUS_PATH);
  struct stat status {};
  const int file = open_regular_file(path.c_str(), access | O_NOFOLLOW, status);
  size = status.st_size;
  if (file < 0 || status.st_nlink == 1) return file;
  close(file);
  errno = EMLINK;
  return -1;
}

bool lock_status(int file, status_keeper keeper) {
  struct flock range = range_of(keeper);
  return fcntl(file, F_SETLK, &range) == 0;
}

bool is_status_locked(int file, status_keeper keeper) {
  struct flock range = range_of(keeper);
  return fcntl(file, F_GETLK, &range) == 0 && range.l_type != F_UNLCK;
}

bool read_status(int file, std::int64_t size, status_image& image) {
  const bool is_whole =
      size == SIZE && pread(file, &image, sizeof image, 0) == SIZE && is_of_this_program(image);
  if (!is_whole) empty_image(image);
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i)
    if (!is_plausible(image.records[i])) empty_record(image.records[i], NAMES[i]);
  return is_whole;
}

bool is_unfinished(const status_record& record) { return record.begun != 0 && record.ended == 0; }

std::string_view reason_in(const status_record& record) {
  return {record.reason, strnlen(record.reason, sizeof record.reason)};
}

}  // namespace skypost
