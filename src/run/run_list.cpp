#include "run/run_list.h"

#include <unistd.h>

#include "channels/channels.h"
#include "pullfiles/pullfiles.h"
#include "run/last_run.h"

namespace skypost {
namespace {

constexpr unsigned STEP_SECONDS = 15;  // the alarm's default action ends the process

constexpr auto OWN = step_limit::own;
constexpr auto SHARED = step_limit::shared;
constexpr auto GATED = step_limit::gated;

constinit const run_step RUN_LIST[] = {
    // clang-format off
    // name                  enabled                   user          limit   call                                                  what
    {"awekas-pull",          &awekas_enabled,          nullptr,      OWN,    {write_awekas_file, "awekas.txt"},                    &AWEKAS_PULL},
    {"awekas-push",          &awekas_enabled,          &awekas_user, SHARED, push_awekas,                                          &AWEKAS_PUSH},
    {"wedaal-pull",          &wedaal_enabled,          nullptr,      OWN,    {write_wedaal_file, "wedaal.txt"},                    &WEDAAL_PULL},
    {"wedaal-push",          &wedaal_enabled,          &wedaal_user, SHARED, push_wedaal,                                          &WEDAAL_PUSH},
    {"meteonews",            &meteonews_enabled,       nullptr,      OWN,    upload_meteonews,                                     &METEONEWS},
    {"sauerlandwetter",      &sauerlandwetter_enabled, nullptr,      OWN,    upload_sauerlandwetter,                               &SAUERLANDWETTER},
    {"SH-Netz",              &shnetz_enabled,          nullptr,      OWN,    upload_shnetz,                                        &SHNETZ},
    {"windfinder",           &windfinder_enabled,      nullptr,      OWN,    upload_windfinder,                                    &WINDFINDER},
    {"windit",               &windit_enabled,          nullptr,      OWN,    upload_windit,                                        &WINDIT},
    {"hetweeractueel",       &hetweeractueel_enabled,  nullptr,      OWN,    {write_hetweeractueel_file, "hetweeractueel.txt"},    &HETWEERACTUEEL},
    {"wetterpage24",         &wetterpage24_enabled,    nullptr,      OWN,    {write_wetterpage24_file, "wetterpage24.txt"},        &WETTERPAGE24},
    {"meteoclimatic",        &meteoclimatic_enabled,   nullptr,      OWN,    {write_meteoclimatic_file, "meteoclimatic.txt"},      &METEOCLIMATIC},
    {"wetterspiegel",        &wetterspiegel_enabled,   nullptr,      OWN,    {write_wetterspiegel_file, "wetterspiegel.txt"},      &WETTERSPIEGEL},
    {"HAMweather/weather4u", &hamweather_enabled,      nullptr,      OWN,    upload_pwsweather,                                    &PWSWEATHER},
    {"wetterarchiv",         &wetterarchiv_enabled,    nullptr,      GATED,  upload_wetterarchiv,                                  &WETTERARCHIV},
    {"anythingweather",      &anythingweather_enabled, nullptr,      OWN,    upload_anythingweather,                               &ANYTHINGWEATHER},
    {"wetterring",           &wetterring_enabled,      nullptr,      OWN,    upload_wetterring,                                    &WETTERRING},
    {"regiowetter",          &regiowetter_enabled,     nullptr,      OWN,    upload_regiowetter,                                   &REGIOWETTER},
    {"regiowetter-bw",       &regiowetter_bw_enabled,  nullptr,      OWN,    upload_regiowetter_bw,                                &REGIOWETTER_BW},
    {"weather underground",  &wunderground_enabled,    nullptr,      OWN,    upload_weather_underground,                           &WUNDERGROUND},
    {"weatherflow",          &weatherflow_enabled,     nullptr,      OWN,    upload_weatherflow,                                   &WEATHERFLOW},
    {"metoffice",            &metoffice_enabled,       nullptr,      OWN,    upload_metoffice_wow,                                 &METOFFICE},
    {"CWOP",                 &cwop_enabled,            nullptr,      OWN,    upload_cwop,                                          &CWOP},
    {"APRS",                 &aprs_enabled,            nullptr,      OWN,    upload_aprs,                                          &APRS},
    {"weatherbug",           &weatherbug_enabled,      nullptr,      OWN,    upload_weatherbug,                                    &WEATHERBUG},
    {"borgervejr",           &borgervejr_enabled,      nullptr,      OWN,    send_mail_report,                                     &BORGERVEJR},
    {"idokep",               &idokep_enabled,          nullptr,      OWN,    upload_idokep,                                        &IDOKEP},
    // clang-format on
};

void run(const run_step& step) {
  if (step.call() != 0) report_failure(step.name);
}

// The gate's time is written whether or not its step is enabled, and whatever the step returned.
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
      if (step.limit == step_limit::own) alarm(STEP_SECONDS);
      run(step);
    }
  }
}

}  // namespace skypost
