#include "base/paths.h"

#include <cstdlib>

namespace skypost {

void append_appliance_path(text_buffer& path, const char* appliance_path) {
  if (const char* const root = std::getenv("SKYPOST_ROOT")) path.append_text(root);
  path.append_text(appliance_path);
}

}  // namespace skypost
