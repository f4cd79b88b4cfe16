#include "common/wget_status.h"

namespace skypost {
namespace {

struct status_row {
  int status;
  const char* meaning;
};

// If several apply, wget exits with the smallest, and with 1 only if nothing more specific applies. 126 and 127 come
// from the shell.
constexpr status_row STATUS_ROWS[] = {
    // clang-format off
    {  1, "wget failed and does not say why"},
    {  2, "wget does not take its options: check its settings, /etc/skypost/wgetrc"},
    {  3, "wget could not write the reply"},
    {  4, "the server was not reached"},
    {  5, "its certificate is not trusted: check the clock and ca-certificates"},
    {  6, "login refused"},
    {  7, "the server does not speak HTTP"},
    {  8, "the server answered with an error"},
    {126, "wget cannot be run"},
    {127, "wget is not installed"},
    // clang-format on
};

}  // namespace

const char* wget_status_meaning(int status) {
  for (const status_row& row : STATUS_ROWS)
    if (row.status == status) return row.meaning;
  return nullptr;
}

}  // namespace skypost
