// Preloaded into the real program and the owner's tools by tests. It writes what they do, one call a line, to the file that
// SKYPOST_TEST_TRACE names: "alarm 15", "popen COMMAND", "system COMMAND", "write PATH", "send TEXT".

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

// The shell and what it starts are left in peace.
void trace(const char* call, std::string_view what) {
  const char* const path = std::getenv("SKYPOST_TEST_TRACE");
  if (path == nullptr || !std::string_view(program_invocation_short_name).starts_with("skypost")) return;
  const std::string line = std::string(call) + ' ' + std::string(what.substr(0, what.find('\n'))) + '\n';
  const int file = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (write(file, line.data(), line.size()) < 0) std::abort();
  close(file);
}

template <typename function>
function* real(const char* name) {
  return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" unsigned alarm(unsigned seconds) {
  trace("alarm", std::to_string(seconds));
  return real<unsigned(unsigned)>("alarm")(seconds);
}

extern "C" std::FILE* popen(const char* command, const char* mode) {
  trace("popen", command);
  return real<std::FILE*(const char*, const char*)>("popen")(command, mode);
}

extern "C" int system(const char* command) {
  trace("system", command);
  return real<int(const char*)>("system")(command);
}

extern "C" std::FILE* fopen64(const char* path, const char* mode) {
  if (*mode == 'w') trace("write", path);
  return real<std::FILE*(const char*, const char*)>("fopen64")(path, mode);
}

extern "C" ssize_t send(int socket, const void* data, std::size_t size, int flags) {
  trace("send", {static_cast<const char*>(data), size});
  return real<ssize_t(int, const void*, std::size_t, int)>("send")(socket, data, size, flags);
}
