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

// The path of an appliance file, under SKYPOST_ROOT if that is set.
std::string appliance_path(const char* path);

// The path of the appliance's own settings file.
std::string appliance_settings_path();

// A settings file as it is on disk: nothing completed, shifted or converted.
struct settings_file {
  std::string path;  // with all symbolic links followed
  std::int64_t size = 0;
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0;
  settings_record image{};  // the file's start, as much as a record holds; zeros after its end
};

// Throws tool_error if the file cannot be read, is empty or is not a regular file.
settings_file read_settings_file(const std::string& path);

// The file's layout in words: "current, 65536 bytes".
std::string layout_of(const settings_file& file);

// The reasons why the settings may be read wrongly: a size or byte order that is not this board's. Each line names the
// file, the fault and the remedy.
std::vector<std::string> faults_of_layout(const settings_file& file);

// The record that the uploader would load from the file, but a switch that is reversed, and on all the same, is 1.
settings_record as_loaded(const settings_file& file);

// Writes a record to a new file that only its owner can read, because it will hold passwords. Throws tool_error if the
// path exists.
void create_settings_file(const std::string& path, const settings_record& record);

// Waits for the lock on the settings file and holds it as long as the result exists. It locks the file itself, so it
// ends with the process, leaves nothing behind, and only those who can read the passwords can take it. Throws
// tool_error if the file cannot be opened.
descriptor lock_settings_file(const std::string& path);

// Atomically replaces the content of `file`, which was read before, with `image`. Keeps size, owner and mode. Throws
// tool_error and leaves the file alone if this fails or if the file has changed since it was read.
void replace_settings_file(const settings_file& file, const settings_record& image);

}  // namespace skypost
