// Preloaded into the real program by tests. It makes calls of the C library fail, and takes out pauses.
//
//   SKYPOST_TEST_FAIL=NAME:N     the N-th call of NAME, counted from 1, fails with EIO
//   SKYPOST_TEST_FAIL=NAME:N-M   so do those after it up to the M-th
//   SKYPOST_TEST_FAIL=fork:N     from the N-th popen or system on no process can be started (EAGAIN)
//   SKYPOST_TEST_HASTE=N         a pause takes an N-th of its time
//   SKYPOST_TEST_CLOCK=N         the clock runs N times as fast, and so does an alarm
//
// At its end the program dies by SIGABRT when a descriptor or a child is left that was not there at its
// start. Exit status 99 says that the N-th call never came.

#include <dirent.h>
#include <dlfcn.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <netdb.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <string_view>

namespace {

constexpr int NOTHING_FAILED = 99;

bool has_failed = false;

// The shell and what it starts are left in peace.
bool is_the_program() { return std::string_view(program_invocation_short_name) == "skypost"; }

// True when this call of `name` is one of those that are to fail.
bool is_to_fail(std::string_view name) {
  static int calls_seen = 0;
  const char* const wanted = is_the_program() ? std::getenv("SKYPOST_TEST_FAIL") : nullptr;
  if (wanted == nullptr || !std::string_view(wanted).starts_with(name) || wanted[name.size()] != ':')
    return false;
  char* end = nullptr;
  const long first = std::strtol(wanted + name.size() + 1, &end, 10);
  const long last = *end == '-' ? std::atol(end + 1) : first;
  ++calls_seen;
  if (calls_seen < first || calls_seen > last) return false;
  has_failed = true;
  errno = EIO;
  return true;
}

unsigned factor_of(const char* variable) {
  const char* const wanted = is_the_program() ? std::getenv(variable) : nullptr;
  return wanted == nullptr ? 1 : static_cast<unsigned>(std::atoi(wanted));
}

unsigned haste() { return factor_of("SKYPOST_TEST_HASTE"); }

// The kernel refuses every new process from now on.
void forbid_processes() {
  sock_filter rules[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_clone, 2, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_clone3, 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
  };
  const sock_fprog program = {.len = std::size(rules), .filter = rules};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
    std::abort();
}

template <typename function>
function* real(const char* name) {
  return reinterpret_cast<function*>(dlsym(RTLD_NEXT, name));
}

int open_descriptors() {
  DIR* const folder = opendir("/proc/self/fd");
  if (folder == nullptr) return 0;
  int count = 0;
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

struct watch {
  int descriptors_at_start = is_the_program() ? open_descriptors() : 0;

  ~watch() {
    if (!is_the_program()) return;
    const bool has_child = waitpid(-1, nullptr, WNOHANG) >= 0;
    if (has_child || open_descriptors() > descriptors_at_start) std::abort();
    if (std::getenv("SKYPOST_TEST_FAIL") != nullptr && !has_failed) _exit(NOTHING_FAILED);
  }
} end_of_program;

}  // namespace

// The parameters are in parentheses, as they are declared and as they are passed on.
#define INTERPOSE(result, name, failed, parameters, arguments) \
  extern "C" result name parameters {                          \
    if (is_to_fail(#name)) return failed;                      \
    return real<result parameters>(#name) arguments;           \
  }

// A call that releases something does so when it fails, too: the kernel's close is like that.
#define INTERPOSE_RELEASE(name, type)                  \
  extern "C" int name(type handle) {                   \
    const int result = real<int(type)>(#name)(handle); \
    return is_to_fail(#name) ? -1 : result;            \
  }

// clang-format off
INTERPOSE(std::FILE*,  fopen64,       nullptr, (const char* path, const char* mode), (path, mode))
INTERPOSE(std::size_t, fread,         0,       (void* place, std::size_t size, std::size_t count, std::FILE* file), (place, size, count, file))
INTERPOSE(char*,       fgets,         nullptr, (char* place, int size, std::FILE* file), (place, size, file))
INTERPOSE(int,         getc,          EOF,     (std::FILE* file), (file))
INTERPOSE(std::size_t, fwrite,        0,       (const void* data, std::size_t size, std::size_t count, std::FILE* file), (data, size, count, file))
INTERPOSE(int,         fputs,         EOF,     (const char* text, std::FILE* file), (text, file))
INTERPOSE(int,         setvbuf,       -1,      (std::FILE* file, char* buffer, int mode, std::size_t size), (file, buffer, mode, size))
INTERPOSE(int,         fstat64,       -1,      (int file, struct stat64* status), (file, status))
INTERPOSE(ssize_t,     read,          -1,      (int file, void* place, std::size_t size), (file, place, size))
INTERPOSE(int,         socket,        -1,      (int domain, int type, int protocol), (domain, type, protocol))
INTERPOSE(int,         setsockopt,    -1,      (int file, int level, int option, const void* value, socklen_t size), (file, level, option, value, size))
INTERPOSE(int,         connect,       -1,      (int file, const sockaddr* address, socklen_t size), (file, address, size))
INTERPOSE(ssize_t,     recv,          -1,      (int file, void* place, std::size_t size, int how), (file, place, size, how))
INTERPOSE(ssize_t,     send,          -1,      (int file, const void* data, std::size_t size, int how), (file, data, size, how))
INTERPOSE(int,         setenv,        -1,      (const char* name, const char* value, int replace), (name, value, replace))
INTERPOSE(int,         sigaction,     -1,      (int number, const struct sigaction* wanted, struct sigaction* old), (number, wanted, old))
INTERPOSE(int,         sigprocmask,   -1,      (int how, const sigset_t* wanted, sigset_t* old), (how, wanted, old))
INTERPOSE_RELEASE(close, int)
INTERPOSE_RELEASE(fclose, std::FILE*)
INTERPOSE_RELEASE(pclose, std::FILE*)
// clang-format on

extern "C" int open64(const char* path, int how, ...) {
  std::va_list arguments;
  va_start(arguments, how);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  if (is_to_fail("open64")) return -1;
  return real<int(const char*, int, ...)>("open64")(path, how, mode);
}

extern "C" std::FILE* popen(const char* command, const char* mode) {
  if (is_to_fail("popen")) return nullptr;
  if (is_to_fail("fork")) forbid_processes();
  return real<std::FILE*(const char*, const char*)>("popen")(command, mode);
}

extern "C" int system(const char* command) {
  if (is_to_fail("system")) return -1;
  if (is_to_fail("fork")) forbid_processes();
  return real<int(const char*)>("system")(command);
}

extern "C" hostent* gethostbyname(const char* name) {
  if (is_to_fail("gethostbyname")) {
    h_errno = NETDB_INTERNAL;  // the reason is in errno
    return nullptr;
  }
  return real<hostent*(const char*)>("gethostbyname")(name);
}

extern "C" std::time_t time(std::time_t* place) {
  using namespace std::chrono;
  static const steady_clock::time_point start = steady_clock::now();
  static const std::time_t start_time = real<std::time_t(std::time_t*)>("time")(nullptr);
  const auto passed = (steady_clock::now() - start) * factor_of("SKYPOST_TEST_CLOCK");
  const std::time_t now = is_to_fail("time") ? -1 : start_time + duration_cast<seconds>(passed).count();
  if (place != nullptr) *place = now;
  return now;
}

extern "C" unsigned alarm(unsigned seconds) {
  const unsigned factor = factor_of("SKYPOST_TEST_CLOCK");
  if (factor == 1) return real<unsigned(unsigned)>("alarm")(seconds);
  const unsigned milliseconds = seconds * 1'000 / factor;
  const itimerval limit = {
      .it_interval = {},
      .it_value = {.tv_sec = milliseconds / 1'000, .tv_usec = milliseconds % 1'000 * 1'000}};
  setitimer(ITIMER_REAL, &limit, nullptr);
  return 0;
}

extern "C" unsigned sleep(unsigned seconds) {
  const unsigned factor = haste();
  if (factor == 1) return real<unsigned(unsigned)>("sleep")(seconds);
  real<int(useconds_t)>("usleep")(seconds * 1'000'000U / factor);
  return 0;
}

extern "C" int usleep(useconds_t microseconds) {
  return real<int(useconds_t)>("usleep")(microseconds / haste());
}
