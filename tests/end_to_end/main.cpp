// The simulated servers have fixed ports. Each test therefore enters a network namespace with its own loopback
// interface, so tests can run in parallel. If that is not permitted, they take turns.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace {

bool enter_own_network() {
  if (unshare(CLONE_NEWNET) != 0) return false;
  ifreq loopback{.ifr_ifrn = {"lo"}, .ifr_ifru = {}};
  loopback.ifr_flags = IFF_UP;
  const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  const bool is_up = ioctl(any, SIOCSIFFLAGS, &loopback) == 0;
  close(any);
  return is_up;
}

// Takes a lock that this process holds until it ends.
void wait_for_turn() {
  const std::string path = std::filesystem::temp_directory_path() / "skypost-tests.lock";
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (file < 0 || flock(file, LOCK_EX) != 0) std::perror(path.c_str());
}

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (!testing::GTEST_FLAG(list_tests) && !enter_own_network()) wait_for_turn();
  return RUN_ALL_TESTS();
}
