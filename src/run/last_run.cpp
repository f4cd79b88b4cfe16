#include "run/last_run.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "base/paths.h"

namespace skypost {
namespace {

constexpr long long AGE_UNKNOWN = 9'999;
constexpr long long AGE_AFTER_CLOCK_CHANGE = 1'000;

}  // namespace

long long last_run_age(long long now) {
  const path_text path(LAST_RUN_PATH);
  std::FILE* const file = std::fopen(path.c_str(), "re");
  if (file == nullptr) return AGE_UNKNOWN;
  char text[101];
  text[std::fread(text, 1, sizeof text - 1, file)] = '\0';
  std::fclose(file);

  char* end = text;
  errno = 0;
  const long long last = std::strtoll(text, &end, 10);
  long long age = 0;
  if (end == text || errno != 0 || __builtin_sub_overflow(now, last, &age)) return AGE_UNKNOWN;
  return age < -TOLERATED_CLOCK_CHANGE ? AGE_AFTER_CLOCK_CHANGE : age;
}

void write_last_run(long long now) {
  const path_text path(LAST_RUN_PATH);
  std::FILE* const file = std::fopen(path.c_str(), "we");
  if (file == nullptr) return;
  std::fprintf(file, "%lld", now);
  std::fclose(file);
}

}  // namespace skypost
