// A child process: what it hands back, and that nothing of it is left.

#include "common/child_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "common/descriptor.h"
#include "common/shared_value.h"

namespace skypost::testing {
namespace {

TEST(ChildProcess, HandsBackWhatItWroteAndHowItEnded) {
  const shared_value<int> number;
  child_process good([&] { return (*number = 42) - 35; });
  good.wait();
  EXPECT_TRUE(good.has_ended());
  EXPECT_EQ(*number, 42);
  EXPECT_EQ(good.exit_status(), 7);
  EXPECT_EQ(good.signal(), 0);

  child_process killed([&] {
    *number = 43;
    return std::raise(SIGALRM);
  });
  killed.wait();
  EXPECT_EQ(*number, 43);
  EXPECT_EQ(killed.exit_status(), -1);
  EXPECT_EQ(killed.signal(), SIGALRM);
}

// Whoever is left of the group holds the pipe open, so the test would not end.
TEST(ChildProcess, EndsWithAllThatItHasStarted) {
  for (const bool ends_itself : {true, false}) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const descriptor reader(ends[0]);
    {
      const descriptor writer(ends[1]);
      child_process child([&] {
        if (fork() == 0 || !ends_itself) pause();
        return 0;
      });
      if (ends_itself) child.wait();
      EXPECT_EQ(child.has_ended(), ends_itself);
    }
    char byte = 0;
    EXPECT_EQ(read(reader.number(), &byte, 1), 0);
  }
}

// Otherwise an upload that the owner interrupts would be tried again for a minute.
TEST(ChildProcess, EndsWithAllThatItHasStartedWhenItsParentIsKilled) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const descriptor reader(ends[0]);
  const pid_t parent = fork();
  if (parent == 0) {
    child_process child([&] { return fork() != 0 && write(ends[1], "x", 1) != 1 ? 1 : pause(); });
    child.wait();
    _exit(0);
  }
  close(ends[1]);
  char byte = 0;
  EXPECT_EQ(read(reader.number(), &byte, 1), 1);
  kill(parent, SIGKILL);
  EXPECT_EQ(waitpid(parent, nullptr, 0), parent);
  EXPECT_EQ(read(reader.number(), &byte, 1), 0);
}

}  // namespace
}  // namespace skypost::testing
