#pragma once

#include <cstddef>
#include <string_view>

#include "settings/fields.h"

// How an owner may name a row of run_list.def. Case, spaces, hyphens and underscores do not matter. Needs no heap, so
// that skypost-status can use it.
namespace skypost {

struct row_names {
  const char* row;      // "HAMweather/weather4u": failures and skypost-status call it so; each half will do
  const char* upload;   // "PWSWEATHER"
  const char* network;  // "PWSweather", the group of its settings
  const char* network_on;  // "&hamweather_enabled", its switch
};

// The group of settings that a switch belongs to.
consteval const char* group_of(const settings_field& enabled) {
#define FIELD(name, kind, group, ...) \
  if (name.offset == enabled.offset) return group;
#include "settings/fields.def"
  return nullptr;
}

// The steps of a run, then the networks of rapid fire: in the order of run_list.def, as the records of skypost-status.
inline constexpr row_names ROW_NAMES[] = {
#define STEP(name, enabled, user, limit, upload) {name, #upload, group_of(*(enabled)), #enabled},
#define RAPID_FIRE(name, enabled, rapid_enabled, interval, upload) \
  {name, #upload "_rapid", group_of(*(enabled)), #enabled},
#include "run/run_list.def"
};

// True if two names are equal for an owner.
bool is_same_name(std::string_view one, std::string_view other);

// True if `name` names this row alone: "awekas-push".
bool is_row_name(std::string_view name, const row_names& row);

// True if `name` names the network that the row belongs to: "AWEKAS". It has other rows, too, if it also gets a file, or
// is served by rapid fire.
bool is_network_name(std::string_view name, const row_names& row);

}  // namespace skypost
