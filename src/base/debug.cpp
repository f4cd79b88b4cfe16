#include "base/debug.h"

#include <cstdarg>
#include <cstdio>

namespace skypost {

constinit std::int32_t debug_flag = 0;

void debug_print(const char* format, ...) {
  if (debug_flag == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
}

}  // namespace skypost
