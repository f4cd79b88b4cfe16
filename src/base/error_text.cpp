#include "base/error_text.h"

#include <cstdarg>
#include <cstdio>

namespace skypost {
namespace {

// Separate from the text_buffer, so that the zeros take no room in the file.
char bytes[ERROR_TEXT_CAPACITY + 1];

}  // namespace

constinit text_buffer error_text{bytes};
constinit exchange latest_exchange;

void doubt_upload(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(latest_exchange.doubt, sizeof latest_exchange.doubt, format, arguments);
  va_end(arguments);
}

}  // namespace skypost
