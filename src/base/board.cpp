#include "base/board.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/paths.h"

namespace skypost {
namespace {

constexpr std::size_t PART_CAPACITY = 8'000;

struct platform_mark {
  const char* mark;
  const char* platform;
};

char address_bytes[HARDWARE_ADDRESS_CAPACITY + 1];

// The first mark found decides the board.
constexpr platform_mark PLATFORM_MARKS[] = {
    {"NSLU2", "NSLU2"}, {"88FR131", "PLUG"}, {"ARMv6", "PLUG"}, {"sun4i", "A10"}, {"", "X86"},
};

// /proc/cpuinfo, then the PCI devices. The first call fills it.
char system_text[2 * PART_CAPACITY + 1];
std::size_t system_text_length;
bool is_first_read = true;

// Reads the start of a file into `place` and adds a NUL. Returns false if the file cannot be opened.
bool read_part(const char* file_path, char* place, std::size_t& length) {
  const path_text path(file_path);
  std::FILE* const file = std::fopen(path.c_str(), "re");
  if (file == nullptr) return false;
  length = std::fread(place, 1, PART_CAPACITY, file);
  place[length] = '\0';
  std::fclose(file);
  return true;
}

}  // namespace

constinit text_buffer hardware_address{address_bytes};

board this_board() { return {std::getenv(PLATFORM_VARIABLE), hardware_address.c_str()}; }

std::size_t read_system_text(const char*& text) {
  if (is_first_read) {
    is_first_read = false;
    std::size_t processor_length = 0;
    std::size_t devices_length = 0;
    if (read_part(PROCESSOR_PATH, system_text, processor_length))
      read_part(PCI_DEVICES_PATH, system_text + processor_length, devices_length);
    system_text_length = processor_length + devices_length;
  }
  text = system_text;
  return system_text_length;
}

void detect_platform() {
  const char* text = nullptr;
  if (read_system_text(text) == 0) return;
  for (const platform_mark& row : PLATFORM_MARKS) {
    if (std::strstr(text, row.mark) == nullptr) continue;
    setenv(PLATFORM_VARIABLE, row.platform, 1);
    return;
  }
}

int find_hardware_address(const char* line, text_buffer& address) {
  constexpr std::string_view MARK = "HWaddr ";
  const char* const mark = std::strstr(line, MARK.data());
  if (mark == nullptr) return -1;
  const char* const found = mark + MARK.size();
  address.append_text(head_of(to_upper_text(found), std::strcspn(found, " \n")));
  return 0;
}

int read_hardware_address(text_buffer& address, std::FILE* errors) {
  address.clear();
  errno = 0;  // a line without an address is not a system error
  std::FILE* const pipe = popen("/sbin/ifconfig eth0 2>/dev/null", "re");
  if (pipe == nullptr) return 0;

  char line[1'000];
  int result = 0;
  if (std::fgets(line, sizeof line, pipe) != nullptr) {
    result = find_hardware_address(line, address);
    if (result != 0) std::fprintf(errors, "Error ifconfig read eth0 mac address: %s\n", std::strerror(errno));
  }
  pclose(pipe);
  return result;
}

const char* to_upper_text(const char* text) {
  static char upper[HARDWARE_ADDRESS_CAPACITY + 1];
  std::size_t length = 0;
  for (; length < sizeof upper - 1 && text[length] != '\0'; ++length)
    upper[length] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[length])));
  upper[length] = '\0';
  return upper;
}

}  // namespace skypost
