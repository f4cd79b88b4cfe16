// Tests preload this library into the real program and the owner's tools. It makes calls of the C library fail,
// shortens pauses, changes the clock, and traces calls.
//
//   SKYPOST_TEST_FAIL=NAME:N     the N-th call of NAME, counted from 1, fails with EIO
//   SKYPOST_TEST_FAIL=NAME:N-M   the N-th to M-th calls fail
//   SKYPOST_TEST_HASTE=N         a pause takes an N-th of its time
//   SKYPOST_TEST_CLOCK=N         the clock, including alarm() and the limits of a socket, runs N times as fast
//   SKYPOST_TEST_TIME=N          the clock stands still at N seconds since the epoch
//   SKYPOST_TEST_TRACE=FILE      one line per call is appended to FILE: "alarm 15", "popen COMMAND",
//                                "system COMMAND", "write PATH", "send TEXT", "recv", "pause MILLISECONDS"
//
// The program is aborted at exit if it leaves a child, or a descriptor that was not open at its start. Its exit status
// is 99 if the N-th call was never made.

#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>

namespace {

constexpr int NOTHING_FAILED = 99;

constexpr int STREAM_ERROR = 0x20;  // the flag that glibc's ferror() tests

bool has_failed = false;

// Programs that inherit LD_PRELOAD, such as the shell, are left alone.
bool is_the_program() { return std::string_view(program_invocation_short_name).starts_with("skypost"); }

const char* wanted(const char* variable) { return is_the_program() ? std::getenv(variable) : nullptr; }

long factor_of(const char* variable) {
  const char* const factor = wanted(variable);
  return factor == nullptr ? 1 : std::atol(factor);
}

timeval shortened(long long microseconds, const char* variable) {
  microseconds /= factor_of(variable);
  return {.tv_sec = microseconds / 1'000'000, .tv_usec = microseconds % 1'000'000};
}

// Counts this call of `name`; returns true if it must fail.
bool is_to_fail(std::string_view name) {
  static int calls_seen = 0;
  const char* const failing = wanted("SKYPOST_TEST_FAIL");
  if (failing == nullptr || !std::string_view(failing).starts_with(name) || failing[name.size()] != ':')
    return false;
  char* end = nullptr;
  const long first = std::strtol(failing + name.size() + 1, &end, 10);
  const long last = *end == '-' ? std::atol(end + 1) : first;
  ++calls_seen;
  if (calls_seen < first || calls_seen > last) return false;
  has_failed = true;
  errno = EIO;
  return true;
}

template <typename function>
function* real(const char* name) {
  return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

void trace(const char* call, std::string_view what = {}) {
  const char* const path = wanted("SKYPOST_TEST_TRACE");
  if (path == nullptr) return;
  std::string line = call;
  if (!what.empty()) line.append(" ").append(what.substr(0, what.find('\n')));
  line += '\n';
  const int file = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (real<ssize_t(int, const void*, std::size_t)>("write")(file, line.data(), line.size()) < 0) std::abort();
  real<int(int)>("close")(file);
}

long open_descriptors() { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); }

struct watch {
  long descriptors_at_start = is_the_program() ? open_descriptors() : 0;

  ~watch() {
    if (!is_the_program()) return;
    const bool has_child = waitpid(-1, nullptr, WNOHANG) >= 0;
    if (has_child || open_descriptors() > descriptors_at_start) std::abort();
    if (wanted("SKYPOST_TEST_FAIL") != nullptr && !has_failed) _exit(NOTHING_FAILED);
  }
} end_of_program;

}  // namespace

// `parameters` and `arguments` are in parentheses. What follows them is executed before the call.
#define INTERPOSE(result, name, failed, parameters, arguments, ...) \
  extern "C" result name parameters {                               \
    __VA_ARGS__;                                                    \
    if (is_to_fail(#name)) return failed;                           \
    return real<result parameters>(#name) arguments;                \
  }

// A releasing call releases even if it fails, as the kernel's close does.
#define INTERPOSE_RELEASE(name, type)                  \
  extern "C" int name(type handle) {                   \
    const int result = real<int(type)>(#name)(handle); \
    return is_to_fail(#name) ? -1 : result;            \
  }

// clang-format off
INTERPOSE(std::FILE*,  fopen64,       nullptr, (const char* path, const char* mode), (path, mode))
INTERPOSE(std::FILE*,  popen,         nullptr, (const char* command, const char* mode), (command, mode), trace("popen", command))
INTERPOSE(int,         system,        -1,      (const char* command), (command), trace("system", command))
INTERPOSE(std::size_t, fread,         0,       (void* place, std::size_t size, std::size_t count, std::FILE* file), (place, size, count, file))
INTERPOSE(char*,       fgets,         nullptr, (char* place, int size, std::FILE* file), (place, size, file))
INTERPOSE(int,         getc,          (file->_flags |= STREAM_ERROR, EOF), (std::FILE* file), (file))
INTERPOSE(int,         fputs,         EOF,     (const char* text, std::FILE* file), (text, file))
INTERPOSE(int,         fstat64,       -1,      (int file, struct stat64* status), (file, status))
INTERPOSE(ssize_t,     read,          -1,      (int file, void* place, std::size_t size), (file, place, size))
INTERPOSE(ssize_t,     write,         -1,      (int file, const void* data, std::size_t size), (file, data, size))
INTERPOSE(int,         fallocate64,   -1,      (int file, int how, off64_t first, off64_t size), (file, how, first, size))
INTERPOSE(int,         ftruncate64,   -1,      (int file, off64_t size), (file, size))
INTERPOSE(int,         socket,        -1,      (int domain, int type, int protocol), (domain, type, protocol))
INTERPOSE(int,         connect,       -1,      (int file, const sockaddr* address, socklen_t size), (file, address, size))
INTERPOSE(ssize_t,     recv,          -1,      (int file, void* place, std::size_t size, int how), (file, place, size, how), trace("recv"))
INTERPOSE(ssize_t,     send,          -1,      (int file, const void* data, std::size_t size, int how), (file, data, size, how), trace("send", {static_cast<const char*>(data), size}))
INTERPOSE(int,         setenv,        -1,      (const char* name, const char* value, int replace), (name, value, replace))
INTERPOSE(int,         sigaction,     -1,      (int number, const struct sigaction* wanted, struct sigaction* old), (number, wanted, old))
INTERPOSE(int,         sigprocmask,   -1,      (int how, const sigset_t* wanted, sigset_t* old), (how, wanted, old))
INTERPOSE_RELEASE(close, int)
INTERPOSE_RELEASE(fclose, std::FILE*)
INTERPOSE_RELEASE(pclose, std::FILE*)
INTERPOSE(int,         getaddrinfo,   EAI_AGAIN, (const char* name, const char* service, const addrinfo* hints, addrinfo** found), (name, service, hints, found))
// NETDB_INTERNAL means that the reason is in errno.
INTERPOSE(hostent*,    gethostbyname, (h_errno = NETDB_INTERNAL, nullptr), (const char* name), (name))
// clang-format on

extern "C" int open64(const char* path, int how, ...) {
  std::va_list arguments;
  va_start(arguments, how);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  if ((how & O_ACCMODE) == O_WRONLY) trace("write", path);
  if (is_to_fail("open64")) return -1;
  return real<int(const char*, int, ...)>("open64")(path, how, mode);
}

extern "C" int setsockopt(int file, int level, int option, const void* value, socklen_t size) {
  if (is_to_fail("setsockopt")) return -1;
  timeval limit{};
  if (level == SOL_SOCKET && (option == SO_RCVTIMEO || option == SO_SNDTIMEO)) {
    std::memcpy(&limit, value, sizeof limit);
    limit = shortened(limit.tv_sec * 1'000'000 + limit.tv_usec, "SKYPOST_TEST_CLOCK");
    value = &limit;
  }
  return real<int(int, int, int, const void*, socklen_t)>("setsockopt")(file, level, option, value, size);
}

extern "C" int clock_gettime(clockid_t clock, timespec* now) {
  const int result = real<int(clockid_t, timespec*)>("clock_gettime")(clock, now);
  if (clock != CLOCK_MONOTONIC) return result;
  const long factor = factor_of("SKYPOST_TEST_CLOCK");
  const long nanoseconds = now->tv_nsec * factor;
  *now = {.tv_sec = now->tv_sec * factor + nanoseconds / 1'000'000'000,
          .tv_nsec = nanoseconds % 1'000'000'000};
  return result;
}

extern "C" std::time_t time(std::time_t* place) {
  using namespace std::chrono;
  static const steady_clock::time_point start = steady_clock::now();
  static const std::time_t start_time = real<std::time_t(std::time_t*)>("time")(nullptr);
  const auto passed = steady_clock::now() - start;  // by the fast clock above
  const char* const stopped_at = wanted("SKYPOST_TEST_TIME");
  std::time_t now =
      stopped_at != nullptr ? std::atol(stopped_at) : start_time + duration_cast<seconds>(passed).count();
  if (is_to_fail("time")) now = -1;
  if (place != nullptr) *place = now;
  return now;
}

extern "C" unsigned alarm(unsigned seconds) {
  trace("alarm", std::to_string(seconds));
  const itimerval limit = {.it_interval = {},
                           .it_value = shortened(seconds * 1'000'000L, "SKYPOST_TEST_CLOCK")};
  setitimer(ITIMER_REAL, &limit, nullptr);
  return 0;
}

extern "C" int nanosleep(const timespec* length, timespec* rest) {
  const long long microseconds = length->tv_sec * 1'000'000LL + length->tv_nsec / 1'000;
  trace("pause", std::to_string(microseconds / 1'000));
  const timeval pause = shortened(microseconds, "SKYPOST_TEST_HASTE");
  const timespec time = {.tv_sec = pause.tv_sec, .tv_nsec = pause.tv_usec * 1'000};
  return real<int(const timespec*, timespec*)>("nanosleep")(&time, rest);
}

extern "C" unsigned sleep(unsigned seconds) {
  const timespec length = {.tv_sec = seconds, .tv_nsec = 0};
  nanosleep(&length, nullptr);
  return 0;
}
