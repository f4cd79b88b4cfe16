#include "settings/load.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "base/board.h"
#include "base/paths.h"
#include "base/regular_file.h"
#include "base/shell.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"

namespace skypost {

constinit settings_record station_settings{};

namespace {

constexpr std::uint32_t GAP_OFFSET = 20'580;
constexpr std::uint32_t GAP_SIZE = 4;

bool is_named(const char* platform, const char* name) {
  return platform != nullptr && std::strcmp(platform, name) == 0;
}

void back_up_settings_file() {
  const path_text path(SETTINGS_PATH);
  fixed_text<2 * 2 * PATH_CAPACITY + 16> command;
  command.append_text("cp ");
  append_shell_word(command, path.view());
  command.append_text(" ");
  append_shell_word(command, path.view());
  command.append_text(".old");
  // A failed copy does no harm, since nothing is written to the file itself.
  [[maybe_unused]] const int ignored = std::system(command.c_str());
}

// Files of unlisted size lack the four bytes at GAP_OFFSET.
void open_gap(settings_record& record) {
  std::memmove(record.bytes + GAP_OFFSET + GAP_SIZE, record.bytes + GAP_OFFSET,
               SETTINGS_SIZE - GAP_OFFSET - GAP_SIZE);
}

// Reads the open file of `size` bytes into the record. Returns 0, or -1 if the file cannot be used.
int read_settings_file(int file, std::int64_t size, settings_record& record, bool make_backup) {
  const bool size_unlisted = is_size_unlisted(size, this_board().platform);

  const std::int64_t length = read(file, record.bytes, SETTINGS_SIZE);
  if (length <= 0) return -1;
  if (length < SETTINGS_SIZE) complete_short_record(record, static_cast<std::uint32_t>(length));
  if (!size_unlisted && length != CURRENT_LAYOUT_SIZE && length != OLDER_PLUG_LAYOUT_SIZE &&
      length != OLDER_LAYOUT_SIZE)
    return -1;

  if (make_backup)
    upgrade_settings(record, size_unlisted);
  else
    adapt_image(record, size_unlisted, this_board().platform);
  return 0;
}

}  // namespace

bool is_size_unlisted(std::int64_t size, const char* platform) {
  if (size == CURRENT_LAYOUT_SIZE || size == OLDER_LAYOUT_SIZE) return false;
  return !(is_named(platform, "PLUG") && size == OLDER_PLUG_LAYOUT_SIZE);
}

void complete_short_record(settings_record& record, std::uint32_t length) {
  std::memset(record.bytes + length, 0, SETTINGS_SIZE - length);
  mark_entries_free(record, LAST_ENTRY_ARRAY);
}

bool is_byte_order_foreign(const settings_record& record, const char* platform) {
  const std::int32_t marker = record.integer(byte_order_marker);
  // An NSLU2 may still have a record from before the marker existed.
  if (is_named(platform, "NSLU2") && marker == 0) return false;
  return marker != 1;
}

bool adapt_image(settings_record& record, bool size_unlisted, const char* platform) {
  if (size_unlisted) open_gap(record);
  const bool is_foreign = is_byte_order_foreign(record, platform);
  if (is_foreign) convert_byte_order(record);
  return is_foreign;
}

int upgrade_settings(settings_record& record, bool size_unlisted) {
  if (size_unlisted) back_up_settings_file();
  return adapt_image(record, size_unlisted, this_board().platform) ? 1 : 0;
}

int load_settings(settings_record& record, bool make_backup) {
  const path_text path(SETTINGS_PATH);
  struct stat found {};
  const int file = open_regular_file(path.c_str(), O_RDONLY, found);
  const int result = file < 0 ? -1 : read_settings_file(file, found.st_size, record, make_backup);
  if (file >= 0) close(file);
  if (result != 0) set_default_settings(record);
  return result;
}

int load_settings_with_retries(settings_record& record) {
  constexpr int ATTEMPTS = 3;
  constexpr unsigned PAUSE = 1;  // seconds
  for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
    if (load_settings(record) == 0) return 0;
    sleep(PAUSE);
  }
  return -1;
}

}  // namespace skypost
