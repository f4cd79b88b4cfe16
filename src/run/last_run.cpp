#include "run/last_run.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "base/paths.h"
#include "base/regular_file.h"

namespace skypost {
namespace {

constexpr long long AGE_UNKNOWN = 9'999;
constexpr long long AGE_AFTER_CLOCK_CHANGE = 1'000;

}  // namespace

long long last_run_age(long long now) {
  const path_text path(LAST_RUN_PATH);
  struct stat found {};
  const int file = open_regular_file(path.c_str(), O_RDONLY | O_NOFOLLOW, found);
  if (file < 0) return AGE_UNKNOWN;
  char text[101];
  const ssize_t count = read(file, text, sizeof text - 1);
  close(file);
  if (count <= 0) return AGE_UNKNOWN;
  text[count] = '\0';

  char* end = text;
  errno = 0;
  const long long last = std::strtoll(text, &end, 10);
  long long age = 0;
  if (end == text || errno != 0 || __builtin_sub_overflow(now, last, &age)) return AGE_UNKNOWN;
  return age < -TOLERATED_CLOCK_CHANGE ? AGE_AFTER_CLOCK_CHANGE : age;
}

void write_last_run(long long now) {
  const path_text path(LAST_RUN_PATH);
  const int file = open_shared_file(path.c_str());
  if (file < 0) return;
  fixed_text<20> text;
  text.append("%lld", now);
  replace_content(file, path.c_str(), text.view());
}

}  // namespace skypost
