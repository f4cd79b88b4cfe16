#pragma once

#include <climits>

#include "base/text.h"

namespace skypost {

inline constexpr char SETTINGS_PATH[] = "/home/nimbulog/nimbulog.conf";
inline constexpr char ALARM_SCRIPT_PATH[] = "/home/nimbulog/alarm";
inline constexpr char MAIL_CONFIGURATION_PATH[] = "/home/nimbulog/esmtprc";
inline constexpr char MAIL_PROGRAM_PATH[] = "/opt/sbin/sendmail";
inline constexpr char LAST_RUN_PATH[] = "/var/run/nimbulog/aerolan.last";
inline constexpr char STATUS_PATH[] = "/var/run/nimbulog/skypost.status";
inline constexpr char RAPID_FIRE_STATUS_PATH[] = "/var/run/nimbulog/skypost-rapid.status";
inline constexpr char ENDPOINTS_PATH[] = "/etc/skypost/endpoints";
inline constexpr char WGET_SETTINGS_PATH[] = "/etc/skypost/wgetrc";
inline constexpr char PROCESSOR_PATH[] = "/proc/cpuinfo";
inline constexpr char PCI_DEVICES_PATH[] = "/proc/bus/pci/devices";

// The directories that networks fetch files from, in the order in which they are written.
inline constexpr const char* PULL_DIRECTORIES[] = {"/srv/www/", "/var/run/nimbulog/uploads/"};

// One character more than Linux accepts: a truncated path is refused and cannot name another file.
inline constexpr std::size_t PATH_CAPACITY = PATH_MAX;

// An appliance path, prefixed with $SKYPOST_ROOT if that is set: the demonstration and the tests keep a whole appliance
// in one directory.
class path_text : public fixed_text<PATH_CAPACITY> {
 public:
  explicit path_text(const char* appliance_path);
};

}  // namespace skypost
