#pragma once

#include "compose/upload.h"

// The text files that networks fetch from the appliance's web server.
//
// A writer composes its file once and writes it, as `name`, into each pull directory in turn. It returns 0, or -1 with the
// reason in `error_text` at the first directory in which the file cannot be opened; a copy written before is kept. While
// the live data are stale it writes nothing and returns 0.
namespace skypost {

struct pull_file : upload {
  const char* name;                   // in the pull directories
  const char* debug_title = nullptr;  // heading in debug output; nullptr: the text is not printed
};

int write_pull_file(const pull_file& file, const char* name);

template <const pull_file& file>
int write_as(const char* name) {
  return write_pull_file(file, name);
}

// The first column of a file's record.
template <const pull_file& file>
consteval upload written_as_file(const char* id, composer compose) {
  return {id, carrier::file, compose, [] { return write_pull_file(file, file.name); }};
}

extern const pull_file AWEKAS_PULL;
extern const pull_file HETWEERACTUEEL;
extern const pull_file METEOCLIMATIC;
extern const pull_file WEDAAL_PULL;
extern const pull_file WETTERPAGE24;
extern const pull_file WETTERSPIEGEL;

inline constexpr auto* write_awekas_file = write_as<AWEKAS_PULL>;
inline constexpr auto* write_hetweeractueel_file = write_as<HETWEERACTUEEL>;
inline constexpr auto* write_meteoclimatic_file = write_as<METEOCLIMATIC>;
inline constexpr auto* write_wedaal_file = write_as<WEDAAL_PULL>;
inline constexpr auto* write_wetterpage24_file = write_as<WETTERPAGE24>;
inline constexpr auto* write_wetterspiegel_file = write_as<WETTERSPIEGEL>;

}  // namespace skypost
