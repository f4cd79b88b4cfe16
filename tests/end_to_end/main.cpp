// The simulated servers have fixed ports. Where that is allowed, each test therefore has the loopback interface of
// a network namespace of its own, so that several can run side by side.

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Where it is not allowed, CTest lets the tests take turns.
void enter_own_network() {
  if (unshare(CLONE_NEWNET) != 0) return;
  ifreq loopback{.ifr_ifrn = {"lo"}, .ifr_ifru = {}};
  loopback.ifr_flags = IFF_UP;
  const int any = socket(AF_INET, SOCK_DGRAM, 0);
  ioctl(any, SIOCSIFFLAGS, &loopback);
  close(any);
}

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  enter_own_network();
  return RUN_ALL_TESTS();
}
