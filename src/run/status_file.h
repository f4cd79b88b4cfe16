#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>
#include <type_traits>

#include "run/upload_switch.h"

// The status file: what became of the last run and of each upload. The uploader keeps it up to date where it exists,
// and never creates it. skypost-status(8) describes it for other programs.
namespace skypost {

// An integer of the file, little-endian on every machine.
template <typename integer>
class little_endian {
 public:
  operator integer() const {
    bits value = 0;
    for (std::size_t i = sizeof bytes_; i-- > 0;) value = value << 8 | bytes_[i];
    return static_cast<integer>(value);
  }
  little_endian& operator=(integer value) {
    for (std::size_t i = 0; i < sizeof bytes_; ++i)
      bytes_[i] = static_cast<unsigned char>(static_cast<bits>(value) >> 8 * i);
    return *this;
  }

 private:
  using bits = std::make_unsigned_t<integer>;

  unsigned char bytes_[sizeof(integer)];
};

enum class status_outcome : std::uint32_t {
  open,            // has begun and not ended, or not even begun
  good,            // for the run: it came to its end
  failed,          // an upload
  no_report,       // the run: the data server could not be read
  no_outdoor_data  // the run: they were not current, so nothing was sent
};

// Of the run, and of each upload. Times are in seconds since the epoch, 0 for never.
struct status_record {
  char name[32];                      // that the alarm script gets; NUL-padded
  little_endian<std::int64_t> begun;  // the last one
  little_endian<std::int64_t> ended;  // 0 if it has not
  little_endian<std::int64_t> last_good;
  little_endian<std::uint32_t> failures;    // in a row, with those that never ended once the next has begun
  little_endian<std::int32_t> wget_status;  // of the last one that ended; -1 if there is none
  little_endian<std::uint32_t>
      run_number;                        // in which it began; in the run's record the number of the last run
  little_endian<std::uint32_t> outcome;  // a status_outcome
  char reason[200];                      // of a failure, its beginning; NUL-padded
};
static_assert(sizeof(status_record) == 272);

// Where the records are: the run's, those of the run list and those of rapid fire, in their order.
inline constexpr std::size_t RUN_RECORD = 0;
inline constexpr std::size_t FIRST_STEP_RECORD = RUN_RECORD + 1;
inline constexpr std::size_t FIRST_RAPID_FIRE_RECORD = FIRST_STEP_RECORD + std::size(STEP_SWITCHES);
inline constexpr std::size_t STATUS_RECORDS = FIRST_RAPID_FIRE_RECORD + std::size(RAPID_FIRE_SWITCHES);

struct status_image {
  char magic[8];
  little_endian<std::uint32_t> version;
  little_endian<std::uint32_t> count;  // of records
  status_record records[STATUS_RECORDS];
};
static_assert(sizeof(status_image) == 16 + STATUS_RECORDS * sizeof(status_record));

// Who keeps its part of the file. A process that does holds a lock on the byte at this offset.
enum class status_keeper : std::uint8_t { run, rapid_fire };

// Opens the file with open()'s access mode `access`, and sets `size`, in bytes. Returns the descriptor, or -1 with the
// reason in errno: as for open_shared_file, and ENOENT if there is none.
int open_status_file(int access, std::int64_t& size);

// Takes the keeper's lock until the file is closed; false if another process has it.
bool lock_status(int file, status_keeper keeper);

// True if another process has the keeper's lock.
bool is_status_locked(int file, status_keeper keeper);

// Reads the open file of `size` bytes. A record that no run has written counts as one that has nothing but its name.
// Returns true if size, header and names are this program's; otherwise that is said of every record.
bool read_status(int file, std::int64_t size, status_image& image);

// True if the last one has begun and not ended.
bool is_unfinished(const status_record& record);

// The reason's beginning; 200 characters if it was cut.
std::string_view reason_in(const status_record& record);

}  // namespace skypost
