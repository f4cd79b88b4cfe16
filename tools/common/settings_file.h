#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "settings/record.h"

namespace skypost {

// The board that files are taken to belong to, as in NIMBULOGHW: the one that is named there, or else this
// one. nullptr when it is unknown.
const char* platform();

// Where a file of the appliance is.
std::string appliance_path(const char* path);

// The appliance's own settings file.
std::string appliance_settings_path();

// A settings file as it is on the disk: nothing completed, shifted or converted.
struct settings_file {
  std::string path;  // with all symbolic links followed
  std::int64_t size = 0;
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0;
  settings_record image{};  // as much of it as a record holds; zeros after its end
};

// Reads a file. Throws tool_error when it is not a file with at least one byte.
settings_file read_settings_file(const std::string& path);

// What kind of file it is, for a person: "current, 65536 bytes".
std::string layout_of(const settings_file& file);

// Why the settings may be read wrongly: a size or a byte order that is not this board's. Each is a line: the file,
// what is wrong with it, and what to do.
std::vector<std::string> faults_of_layout(const settings_file& file);

// The record that the uploader makes of the file.
settings_record as_loaded(const settings_file& file);

// Writes a whole record to a new file, which its owner alone can read: it will hold passwords.
// Throws tool_error when there is something under that name already.
void create_settings_file(const std::string& path, const settings_record& record);

// Puts `file.image` in the place of the file in one step, at its size, with its owner and mode: whoever
// reads it meets the old content or the new one. Throws tool_error when it cannot; the file is then
// as it was.
void replace_settings_file(const settings_file& file);

}  // namespace skypost
