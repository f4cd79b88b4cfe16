#include "pullfiles/pullfiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/paths.h"
#include "base/process_state.h"

namespace skypost {
namespace {

int write_into(const char* directory, const char* name, const text_buffer& text, const char* debug_title) {
  path_text path;
  append_appliance_path(path, directory);
  path.append_text(name);
  std::FILE* const file = std::fopen(path.c_str(), "we");
  if (file == nullptr) {
    error_text.clear();
    error_text.append("error open file %s: %s\n", path.c_str(), std::strerror(errno));
    return -1;
  }
  if (debug_title != nullptr) debug_print("\n%s\n%s\n", debug_title, text.c_str());
  // The web server may be handing out the file that was just emptied. Without a buffer the whole text follows
  // in one system call, so the time in which a network can fetch less than all of it is as short as can be.
  std::setvbuf(file, nullptr, _IONBF, 0);
  std::fwrite(text.c_str(), 1, text.length(), file);
  std::fclose(file);
  return 0;
}

}  // namespace

int write_pull_file(const pull_file& file, const char* name) {
  const std::optional<station> from = current_station();
  if (!from) return 0;
  outgoing_text text;
  file.compose(text, *from);
  for (const char* const directory : PULL_DIRECTORIES)
    if (write_into(directory, name, text, file.debug_title) != 0) return -1;
  return 0;
}

}  // namespace skypost
