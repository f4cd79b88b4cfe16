#include "base/debug.h"

#include <unistd.h>

#include <cstdarg>
#include <cstdio>

namespace skypost {

namespace {

// True for a byte that is a control character, or that ends one in UTF-8.
bool is_control(unsigned char byte, unsigned char previous) {
  const bool continues_a_letter = previous >= 0x80 && previous != 0xC2;
  return byte < ' ' || byte == 0x7F || (byte >= 0x80 && byte < 0xA0 && !continues_a_letter);
}

// Prints with a "?" for each control character: a server's text must not command the terminal.
[[gnu::format(printf, 1, 0)]] void print_harmlessly(const char* format, std::va_list arguments) {
  static char text[32'768];
  std::vsnprintf(text, sizeof text, format, arguments);
  unsigned char previous = ' ';
  for (char* character = text; *character != '\0'; ++character) {
    const auto byte = static_cast<unsigned char>(*character);
    if (byte != '\n' && is_control(byte, previous)) *character = '?';
    previous = byte;
  }
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
