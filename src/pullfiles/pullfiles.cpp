#include "pullfiles/pullfiles.h"

#include <cerrno>
#include <cstring>

#include "base/debug.h"
#include "base/error_text.h"
#include "base/paths.h"
#include "base/regular_file.h"

namespace skypost {
namespace {

int write_into(const char* directory, const char* name, const char* debug_title, const text_buffer& text) {
  path_text path(directory);
  path.append_text(name);
  const int file = open_shared_file(path.c_str());
  if (file < 0) {
    error_text.clear();
    error_text.append("error open file %s: %s\n", path.c_str(), std::strerror(errno));
    return -1;
  }
  if (debug_title != nullptr) debug_print("\n%s\n%s\n", debug_title, text.c_str());
  if (replace_content(file, path.c_str(), text.view()) != 0)
    doubt_upload("%s was not written: %s", name, std::strerror(errno));
  return 0;
}

}  // namespace

int write_pull_file(const pull_file& file, const char* name) {
  const std::optional<station> source = current_station();
  if (!source) return 0;
  upload_text text;
  file.compose(text, *source);
  for (const char* const directory : PULL_DIRECTORIES)
    if (write_into(directory, name, file.debug_title, text) != 0) return -1;
  return 0;
}

}  // namespace skypost
