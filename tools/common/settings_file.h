#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "common/descriptor.h"
#include "settings/record.h"

namespace skypost {

// The kind of board that files are assumed to come from: NIMBULOGHW if set, otherwise this machine's. nullptr if
// unknown.
const char* platform();

// The path of one of the appliance's files.
std::string appliance_path(const char* path);

// The appliance's own settings file.
std::string appliance_settings_path();

// A settings file as it is on disk: nothing completed, shifted or converted.
struct settings_file {
  std::string path;  // with all symbolic links followed
  std::int64_t size = 0;
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0;
  settings_record image{};  // as much of it as a record holds; zeros after its end
};

// Reads a file. Throws tool_error if it is not a non-empty regular file.
settings_file read_settings_file(const std::string& path);

// Its layout in words: "current, 65536 bytes".
std::string layout_of(const settings_file& file);

// Why the settings may be read wrongly: a size or byte order that is not this board's. Each is a line: the file,
// what is wrong with it, and what to do.
std::vector<std::string> faults_of_layout(const settings_file& file);

// The record as the uploader loads it.
settings_record as_loaded(const settings_file& file);

// Writes a record to a new file that only its owner can read, since it will hold passwords. Throws tool_error if
// the path exists.
void create_settings_file(const std::string& path, const settings_record& record);

// Waits until nobody else has this lock, and holds it as long as the result exists. It is on the file itself, so it
// ends with the process, leaves nothing behind, and only those who can read the passwords can take it. Throws
// tool_error if the file cannot be opened.
descriptor lock_settings_file(const std::string& path);

// Atomically replaces the content of `file`, as read before, with `image`, keeping size, owner and mode; readers see
// the old or the new content. Throws tool_error on failure, or if the file has changed since it was read; it is
// left alone then.
void replace_settings_file(const settings_file& file, const settings_record& image);

}  // namespace skypost
