// Preloaded into the program, so that `ifconfig` shows it a board's eth0.

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

extern "C" FILE* popen(const char* command, const char* mode) {
  using popen_function = FILE* (*)(const char*, const char*);
  static const auto next = reinterpret_cast<popen_function>(dlsym(RTLD_NEXT, "popen"));
  constexpr char IFCONFIG[] = "/sbin/ifconfig eth0";
  if (std::strncmp(command, IFCONFIG, sizeof IFCONFIG - 1) == 0)
    command = "cat \"$SKYPOST_ROOT/simulated/ifconfig\"";
  return next(command, mode);
}
