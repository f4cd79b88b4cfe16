#include "base/debug.h"

#include <unistd.h>

#include <cctype>
#include <cstdarg>
#include <cstdio>

namespace skypost {

namespace {

// Prints with a "?" for each control character: a server's text must not command the terminal.
[[gnu::format(printf, 1, 0)]] void print_harmlessly(const char* format, std::va_list arguments) {
  static char text[32'768];
  std::vsnprintf(text, sizeof text, format, arguments);
  for (char* character = text; *character != '\0'; ++character)
    if (std::iscntrl(static_cast<unsigned char>(*character)) != 0 && *character != '\n') *character = '?';
  std::fputs(text, stderr);
}

}  // namespace

constinit std::int32_t debug_flag = 0;

void debug_print(const char* format, ...) {
  if (debug_flag == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  if (isatty(STDERR_FILENO) == 0)
    std::vfprintf(stderr, format, arguments);
  else
    print_harmlessly(format, arguments);
  va_end(arguments);
}

}  // namespace skypost
