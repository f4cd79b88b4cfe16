#include "pullfiles/pullfiles.h"

#include <cerrno>
#include <cstring>

#include "base/debug.h"
#include "base/error_text.h"
#include "base/paths.h"
#include "base/regular_file.h"

namespace skypost {
namespace {

int write_into(const char* directory, const pull_file& pulled, const text_buffer& text) {
  path_text path(directory);
  path.append_text(pulled.name);
  const int file = open_shared_file(path.c_str());
  if (file < 0) {
    error_text.clear();
    error_text.append("error open file %s: %s\n", path.c_str(), std::strerror(errno));
    return -1;
  }
  if (pulled.debug_title != nullptr) debug_print("\n%s\n%s\n", pulled.debug_title, text.c_str());
  replace_content(file, path.c_str(), text.view());
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
