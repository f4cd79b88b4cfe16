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

bool is_platform(const char* platform, const char* name) {
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
  // A failed backup does no harm: the file itself is never written.
  [[maybe_unused]] const int ignored = std::system(command.c_str());
}

// Files of unlisted size lack the four bytes at GAP_OFFSET.
void open_gap(settings_record& record) {
  std::memmove(record.bytes + GAP_OFFSET + GAP_SIZE, record.bytes + GAP_OFFSET,
               SETTINGS_SIZE - GAP_OFFSET - GAP_SIZE);
}

// What becomes of an image that was read: upgrade_settings, or as much of it as changes no file.
using upgrade = std::int32_t (*)(settings_record& record, std::int32_t size_unlisted);

// Reads the open file of `size` bytes into the record; returns -1 if it cannot be used, otherwise 0.
std::int32_t read_settings_file(int file, std::int64_t size, settings_record& record, upgrade upgraded_by) {
  const bool size_unlisted = is_size_unlisted(size, this_board().platform);

  const std::int64_t count = read(file, record.bytes, SETTINGS_SIZE);
  if (count <= 0) return -1;
  if (count < SETTINGS_SIZE) complete_short_record(record, static_cast<std::uint32_t>(count));
  if (!size_unlisted && count != CURRENT_LAYOUT_SIZE && count != OLDER_PLUG_LAYOUT_SIZE &&
      count != OLDER_LAYOUT_SIZE)
    return -1;

  upgraded_by(record, size_unlisted ? 1 : 0);
  return 0;
}

std::int32_t load_settings_file(settings_record& record, upgrade upgraded_by) {
  const path_text path(SETTINGS_PATH);
  struct stat status {};
  const int file = open_regular_file(path.c_str(), O_RDONLY, status);
  const std::int32_t result = file < 0 ? -1 : read_settings_file(file, status.st_size, record, upgraded_by);
  if (file >= 0) close(file);
  if (result != 0) set_default_settings(record);
  return result;
}

}  // namespace

bool is_size_unlisted(std::int64_t size, const char* platform) {
  if (size == CURRENT_LAYOUT_SIZE || size == OLDER_LAYOUT_SIZE) return false;
  return !(is_platform(platform, "PLUG") && size == OLDER_PLUG_LAYOUT_SIZE);
}

void complete_short_record(settings_record& record, std::uint32_t count) {
  std::memset(record.bytes + count, 0, SETTINGS_SIZE - count);
  constexpr std::int32_t FREE = -1;
  for (std::uint32_t i = 0; i < LAST_ENTRY_ARRAY.entries; ++i)
    std::memcpy(record.bytes + LAST_ENTRY_ARRAY.first + i * LAST_ENTRY_ARRAY.stride, &FREE, sizeof FREE);
}

bool is_byte_order_foreign(const settings_record& record, const char* platform) {
  const std::int32_t marker = record.integer(byte_order_marker);
  // NSLU2 wrote records before the marker existed.
  if (is_platform(platform, "NSLU2") && marker == 0) return false;
  return marker != 1;
}

std::int32_t adapt_image(settings_record& record, bool size_unlisted, const char* platform) {
  if (size_unlisted) open_gap(record);
  if (!is_byte_order_foreign(record, platform)) return 0;
  convert_byte_order(record);
  return 1;
}

std::int32_t upgrade_settings(settings_record& record, std::int32_t size_unlisted) {
  if (size_unlisted != 0) back_up_settings_file();
  return adapt_image(record, size_unlisted != 0, this_board().platform);
}

std::int32_t load_settings(settings_record& record) { return load_settings_file(record, upgrade_settings); }

std::int32_t look_at_settings(settings_record& record) {
  return load_settings_file(record, [](settings_record& image, std::int32_t size_unlisted) {
    return adapt_image(image, size_unlisted != 0, this_board().platform);
  });
}

std::int32_t load_settings_with_retries(settings_record& record) {
  constexpr int ATTEMPTS = 3;
  constexpr unsigned PAUSE = 1;  // seconds
  for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
    if (load_settings(record) == 0) return 0;
    sleep(PAUSE);
  }
  return -1;
}

}  // namespace skypost
