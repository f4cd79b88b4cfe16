// A process reads the system files only once, so each case has a process of its own.

#include "base/board.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/paths.h"
#include "support/appliance_folder.h"

namespace skypost::testing {
namespace {

using file = std::optional<std::string>;

void write(const appliance_folder& appliance, const file& processor, const file& devices) {
  if (processor) appliance.write(PROCESSOR_PATH, *processor);
  if (devices) appliance.write(PCI_DEVICES_PATH, *devices);
}

[[noreturn]] void print_platform(const appliance_folder& appliance) {
  setenv("NIMBULOGHW", "as before", 1);
  detect_platform();
  write(appliance, "88FR131", "88FR131");  // must be ignored
  detect_platform();
  std::fprintf(stderr, "<%s>", std::getenv("NIMBULOGHW"));
  std::_Exit(0);
}

TEST(HostIdentity, TellsTheBoardByTheFirstMark) {
  const std::string full(8'000, 'x');
  const struct {
    file processor, devices;
    std::string platform;
  } cases[] = {
      {"Hardware: NSLU2", "", "NSLU2"},
      {"Feroceon 88FR131 rev 1", "", "PLUG"},
      {"ARMv6-compatible processor", std::nullopt, "PLUG"},
      {"ARMv6 NSLU2", "", "NSLU2"},
      {"sun4i", "", "A10"},
      {"sun4i 88FR131", "", "PLUG"},
      {"sun4i ARMv6", "", "PLUG"},
      {"Intel", "0100 sun4i", "A10"},
      {"Intel armv6 nslu2", "8086", "X86"},
      {"Intel", std::nullopt, "X86"},
      {"NSL", "U2", "NSLU2"},  // the mark spans both files
      {std::nullopt, "sun4i", "as before"},
      {"", "", "as before"},
      {"", "sun4i", "A10"},
      {full + "NSLU2", "x", "X86"},
      {full.substr(5) + "NSLU2", "x", "NSLU2"},
      {full, full + "NSLU2", "X86"},
      {full, full.substr(5) + "NSLU2", "NSLU2"},
  };
  for (const auto& [processor, devices, platform] : cases) {
    const appliance_folder appliance;
    write(appliance, processor, devices);
    EXPECT_EXIT(print_platform(appliance), ::testing::ExitedWithCode(0), "<" + platform + ">");
  }
}

TEST(HostIdentity, FindsTheHardwareAddressInALine) {
  const struct {
    const char* line;
    int result;
    const char* address;
  } cases[] = {
      {"eth0      Link encap:Ethernet  HWaddr 00:1a:2b:3c:4d:5e  \n", 0, "00:1A:2B:3C:4D:5E"},
      {"eth0      Link encap:Ethernet  HWaddr 00:1a:2b:3c:4d:5e\n", 0, "00:1A:2B:3C:4D:5E"},
      {"eth0      Link encap:Ethernet  HWaddr 00:1a:2b:3c:4d:5e", 0, "00:1A:2B:3C:4D:5E"},
      {"ib0 HWaddr 80-00-00-48-fe-80-00-00-00-00-00-00-00-02 \n", 0, "80-00-00-48-FE-80-00-00-00-00-0"},
      {"eth0 HWaddr \n", 0, ""},
      {"eth0: flags=4163<UP,BROADCAST>  mtu 1500\n", -1, ""},
      {"eth0 HWaddr\n", -1, ""},
  };
  for (const auto& [line, result, expected] : cases) {
    fixed_text<31> address;
    EXPECT_EQ(find_hardware_address(line, address), result) << line;
    EXPECT_EQ(address.view(), expected);
  }
}

}  // namespace
}  // namespace skypost::testing
