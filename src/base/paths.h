#pragma once

#include "base/text.h"

namespace skypost {

inline constexpr char SETTINGS_PATH[] = "/home/nimbulog/nimbulog.conf";
inline constexpr char ALARM_SCRIPT_PATH[] = "/home/nimbulog/alarm";
inline constexpr char MAIL_CONFIGURATION_PATH[] = "/home/nimbulog/esmtprc";
inline constexpr char MAIL_PROGRAM_PATH[] = "/opt/sbin/sendmail";
inline constexpr char LAST_RUN_PATH[] = "/var/run/nimbulog/aerolan.last";
inline constexpr char ENDPOINTS_PATH[] = "/etc/skypost/endpoints";
inline constexpr char WGET_SETTINGS_PATH[] = "/etc/skypost/wgetrc";
inline constexpr char PROCESSOR_PATH[] = "/proc/cpuinfo";
inline constexpr char PCI_DEVICES_PATH[] = "/proc/bus/pci/devices";

// The directories that networks fetch files from, in the order in which they are written.
inline constexpr const char* PULL_DIRECTORIES[] = {"/srv/www/", "/var/run/nimbulog/uploads/"};

// The longest path that Linux accepts.
inline constexpr std::size_t PATH_CAPACITY = 4'095;
using path_text = fixed_text<PATH_CAPACITY>;

// Appends one of the appliance's own paths, with the variable SKYPOST_ROOT, when set, before it: a whole
// appliance in a folder, for a demonstration or a test.
void append_appliance_path(text_buffer& path, const char* appliance_path);

}  // namespace skypost
