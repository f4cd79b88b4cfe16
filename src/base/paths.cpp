#include "base/paths.h"

#include <cstdlib>

namespace skypost {

path_text::path_text(const char* appliance_path) {
  if (const char* const root = std::getenv("SKYPOST_ROOT")) append_text(root);
  append_text(appliance_path);
}

}  // namespace skypost
