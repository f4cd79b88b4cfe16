#include "base/process_state.h"

#include <cstdarg>
#include <cstdio>

namespace skypost {
namespace {

// Apart from their text_buffer, so that the zeros take no room in the file.
char error_text_bytes[ERROR_TEXT_CAPACITY + 1];
char hardware_address_bytes[32];

}  // namespace

constinit run_flags flags{};
constinit text_buffer error_text{error_text_bytes};
constinit text_buffer hardware_address{hardware_address_bytes};

void debug_print(const char* format, ...) {
  if (flags.debug_flag == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
}

}  // namespace skypost
