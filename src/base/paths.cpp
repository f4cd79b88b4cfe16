#include "base/paths.h"

#include <cstdlib>

namespace skypost {

static_assert(PATH_CAPACITY >= PATH_MAX, "a truncated path could name another file");

path_text::path_text(const char* appliance_path) {
  if (const char* const root = std::getenv("SKYPOST_ROOT")) append_text(root);
  append_text(appliance_path);
}

}  // namespace skypost
