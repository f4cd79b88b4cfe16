#include "pullfiles/pullfiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/debug.h"
#include "base/error_text.h"
#include "base/paths.h"

namespace skypost {
namespace {

int write_into(const char* directory, const pull_file& pulled, const text_buffer& text) {
  path_text path(directory);
  path.append_text(pulled.name);
  std::FILE* const file = std::fopen(path.c_str(), "we");
  if (file == nullptr) {
    error_text.clear();
    error_text.append("error open file %s: %s\n", path.c_str(), std::strerror(errno));
    return -1;
  }
  if (pulled.debug_title != nullptr) debug_print("\n%s\n%s\n", pulled.debug_title, text.c_str());
  // The web server may be reading the file that was just emptied. Unbuffered, the text is written in one
  // call, which keeps that window short.
  std::setvbuf(file, nullptr, _IONBF, 0);
  std::fwrite(text.c_str(), 1, text.length(), file);
  std::fclose(file);
  return 0;
}

}  // namespace

int write_pull_file(const pull_file& file) {
  const std::optional<station> source = current_station();
  if (!source) return 0;
  outgoing_text text;
  file.compose(text, *source);
  for (const char* const directory : PULL_DIRECTORIES)
    if (write_into(directory, file, text) != 0) return -1;
  return 0;
}

}  // namespace skypost
