#include "common/child_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "common/shared_value.h"

namespace skypost::testing {
namespace {

TEST(ChildProcess, HandsBackWhatItWroteBeforeItWasKilled) {
  const shared_value<int> number;
  child_process child([&] {
    *number = 42;
    return std::raise(SIGALRM);
  });
  child.wait();
  EXPECT_EQ(*number, 42);
  EXPECT_EQ(child.exit_status(), -1);
  EXPECT_EQ(child.signal(), SIGALRM);
}

// A process left in the group would hold the pipe open, and the test would hang.
class ChildGroup : public ::testing::Test {
 protected:
  ChildGroup() { EXPECT_EQ(pipe(ends), 0); }
  ~ChildGroup() override {
    char byte = 0;
    close(ends[1]);
    EXPECT_EQ(read(ends[0], &byte, 1), 0);
    close(ends[0]);
  }

  int ends[2];
};

TEST_F(ChildGroup, EndsWithTheObject) {
  child_process child([] { return pause(); });
  EXPECT_FALSE(child.has_ended());
}

TEST_F(ChildGroup, EndsWithTheObjectThoughItsLeaderHasEnded) {
  child_process child([] { return fork() == 0 ? pause() : 7; });
  child.wait();
  EXPECT_TRUE(child.has_ended());
  EXPECT_EQ(child.exit_status(), 7);
  EXPECT_EQ(child.signal(), 0);
}

// Otherwise an upload that the owner interrupts would go on retrying for a minute.
TEST_F(ChildGroup, EndsWhenItsParentIsKilled) {
  const pid_t parent = fork();
  if (parent == 0) {
    child_process child([&] { return fork() != 0 && write(ends[1], "x", 1) != 1 ? 1 : pause(); });
    child.wait();
    _exit(0);
  }
  char byte = 0;
  EXPECT_EQ(read(ends[0], &byte, 1), 1);
  kill(parent, SIGKILL);
  EXPECT_EQ(waitpid(parent, nullptr, 0), parent);
}

}  // namespace
}  // namespace skypost::testing
