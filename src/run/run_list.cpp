#include "run/run_list.h"

#include <unistd.h>

#include "channels/channels.h"
#include "networks/networks.h"
#include "pullfiles/pullfiles.h"
#include "run/last_run.h"

namespace skypost {
namespace {

constexpr unsigned STEP_SECONDS = 15;  // then SIGALRM ends the process

constexpr auto FRESH = step_limit::fresh;
constexpr auto SHARED = step_limit::shared;
constexpr auto GATED = step_limit::gated;

constinit const run_step RUN_LIST[] = {
    // clang-format off
    // name                  enabled                   user          limit   upload
    {"awekas-pull",          &awekas_enabled,          nullptr,      FRESH,  &AWEKAS_PULL},
    {"awekas-push",          &awekas_enabled,          &awekas_user, SHARED, &AWEKAS_PUSH},
    {"wedaal-pull",          &wedaal_enabled,          nullptr,      FRESH,  &WEDAAL_PULL},
    {"wedaal-push",          &wedaal_enabled,          &wedaal_user, SHARED, &WEDAAL_PUSH},
    {"meteonews",            &meteonews_enabled,       nullptr,      FRESH,  &METEONEWS},
    {"sauerlandwetter",      &sauerlandwetter_enabled, nullptr,      FRESH,  &SAUERLANDWETTER},
    {"SH-Netz",              &shnetz_enabled,          nullptr,      FRESH,  &SHNETZ},
    {"windfinder",           &windfinder_enabled,      nullptr,      FRESH,  &WINDFINDER},
    {"windit",               &windit_enabled,          nullptr,      FRESH,  &WINDIT},
    {"hetweeractueel",       &hetweeractueel_enabled,  nullptr,      FRESH,  &HETWEERACTUEEL},
    {"wetterpage24",         &wetterpage24_enabled,    nullptr,      FRESH,  &WETTERPAGE24},
    {"meteoclimatic",        &meteoclimatic_enabled,   nullptr,      FRESH,  &METEOCLIMATIC},
    {"wetterspiegel",        &wetterspiegel_enabled,   nullptr,      FRESH,  &WETTERSPIEGEL},
    {"HAMweather/weather4u", &hamweather_enabled,      nullptr,      FRESH,  &PWSWEATHER},
    {"wetterarchiv",         &wetterarchiv_enabled,    nullptr,      GATED,  &WETTERARCHIV},
    {"anythingweather",      &anythingweather_enabled, nullptr,      FRESH,  &ANYTHINGWEATHER},
    {"wetterring",           &wetterring_enabled,      nullptr,      FRESH,  &WETTERRING},
    {"regiowetter",          &regiowetter_enabled,     nullptr,      FRESH,  &REGIOWETTER},
    {"regiowetter-bw",       &regiowetter_bw_enabled,  nullptr,      FRESH,  &REGIOWETTER_BW},
    {"weather underground",  &wunderground_enabled,    nullptr,      FRESH,  &WUNDERGROUND},
    {"weatherflow",          &weatherflow_enabled,     nullptr,      FRESH,  &WEATHERFLOW},
    {"metoffice",            &metoffice_enabled,       nullptr,      FRESH,  &METOFFICE},
    {"CWOP",                 &cwop_enabled,            nullptr,      FRESH,  &CWOP},
    {"APRS",                 &aprs_enabled,            nullptr,      FRESH,  &APRS},
    {"weatherbug",           &weatherbug_enabled,      nullptr,      FRESH,  &WEATHERBUG},
    {"borgervejr",           &borgervejr_enabled,      nullptr,      FRESH,  &BORGERVEJR},
    {"idokep",               &idokep_enabled,          nullptr,      FRESH,  &IDOKEP},
    // clang-format on
};

void run(const run_step& step) {
  if (step.upload->send() != 0) report_failure(step.name);
}

// The last-run time is written even if the step is disabled or failed.
void run_gated(const run_step& step, const settings_record& settings, long long age, long long now) {
  if (age <= GATE_INTERVAL) return;
  alarm(STEP_SECONDS);
  if (is_enabled(step, settings)) run(step);
  write_last_run(now);
}

}  // namespace

std::span<const run_step> run_list() { return RUN_LIST; }

bool is_enabled(const run_step& step, const settings_record& settings) {
  return settings.is_on(*step.enabled) && (step.user == nullptr || settings.text(*step.user).size() > 1);
}

bool is_any_network_enabled(const settings_record& settings) {
  for (const run_step& step : RUN_LIST)
    if (settings.is_on(*step.enabled)) return true;
  return false;
}

void walk_run_list(const settings_record& settings, long long age, long long now) {
  for (const run_step& step : RUN_LIST) {
    if (step.limit == step_limit::gated) {
      run_gated(step, settings, age, now);
    } else if (is_enabled(step, settings)) {
      if (step.limit == step_limit::fresh) alarm(STEP_SECONDS);
      run(step);
    }
  }
}

}  // namespace skypost
