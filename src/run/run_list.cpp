#include "run/run_list.h"

#include <unistd.h>

#include <iterator>

#include "channels/aprs.h"
#include "channels/mail_report.h"
#include "networks/anythingweather.h"
#include "networks/awekas_wedaal.h"
#include "networks/idokep_wetterarchiv.h"
#include "networks/meteonews.h"
#include "networks/regiowetter.h"
#include "networks/sauerlandwetter.h"
#include "networks/shnetz.h"
#include "networks/weather_underground.h"
#include "networks/wetterring.h"
#include "networks/windfinder_windit.h"
#include "pullfiles/awekas_files.h"
#include "pullfiles/hetweeractueel.h"
#include "pullfiles/meteoclimatic.h"
#include "pullfiles/wetterspiegel.h"
#include "run/last_run.h"
#include "run/report.h"

namespace skypost {
namespace {

// One step of the one-shot run.
struct run_step {
  const char* name;  // under which its failure is reported
  const integer_field* enabled;
  const text_field* user;  // when set: the step also needs a text of more than one character here
  bool own_alarm;          // false: it runs under the alarm of the step before it
  bool behind_gate;        // runs only when enough time has passed since the last run
  int (*call)();           // 0, or another value with the reason in `error_text`
};

constexpr unsigned STEP_LIMIT = 15;       // seconds; the alarm's default action ends the process
constexpr long long GATE_INTERVAL = 960;  // seconds

constexpr run_step RUN_LIST[] = {
    // clang-format off
    // name                  enabled                   user          alarm  gate   call
    {"awekas-pull",          &awekas_enabled,          nullptr,      true,  false, [] { return write_awekas_file("awekas.txt"); }},
    {"awekas-push",          &awekas_enabled,          &awekas_user, false, false, push_awekas},
    {"wedaal-pull",          &wedaal_enabled,          nullptr,      true,  false, [] { return write_wedaal_file("wedaal.txt"); }},
    {"wedaal-push",          &wedaal_enabled,          &wedaal_user, false, false, push_wedaal},
    {"meteonews",            &meteonews_enabled,       nullptr,      true,  false, upload_meteonews},
    {"sauerlandwetter",      &sauerlandwetter_enabled, nullptr,      true,  false, upload_sauerlandwetter},
    {"SH-Netz",              &shnetz_enabled,          nullptr,      true,  false, upload_shnetz},
    {"windfinder",           &windfinder_enabled,      nullptr,      true,  false, upload_windfinder},
    {"windit",               &windit_enabled,          nullptr,      true,  false, upload_windit},
    {"hetweeractueel",       &hetweeractueel_enabled,  nullptr,      true,  false, [] { return write_hetweeractueel_file("hetweeractueel.txt"); }},
    {"wetterpage24",         &wetterpage24_enabled,    nullptr,      true,  false, [] { return write_wetterpage24_file("wetterpage24.txt"); }},
    {"meteoclimatic",        &meteoclimatic_enabled,   nullptr,      true,  false, [] { return write_meteoclimatic_file("meteoclimatic.txt"); }},
    {"wetterspiegel",        &wetterspiegel_enabled,   nullptr,      true,  false, [] { return write_wetterspiegel_file("wetterspiegel.txt"); }},
    {"HAMweather/weather4u", &hamweather_enabled,      nullptr,      true,  false, upload_pwsweather},
    {"wetterarchiv",         &wetterarchiv_enabled,    nullptr,      true,  true,  upload_wetterarchiv},
    {"anythingweather",      &anythingweather_enabled, nullptr,      true,  false, upload_anythingweather},
    {"wetterring",           &wetterring_enabled,      nullptr,      true,  false, upload_wetterring},
    {"regiowetter",          &regiowetter_enabled,     nullptr,      true,  false, upload_regiowetter},
    {"regiowetter-bw",       &regiowetter_bw_enabled,  nullptr,      true,  false, upload_regiowetter_bw},
    {"weather underground",  &wunderground_enabled,    nullptr,      true,  false, upload_weather_underground},
    {"weatherflow",          &weatherflow_enabled,     nullptr,      true,  false, upload_weatherflow},
    {"metoffice",            &metoffice_enabled,       nullptr,      true,  false, upload_metoffice_wow},
    {"CWOP",                 &cwop_enabled,            nullptr,      true,  false, upload_cwop},
    {"APRS",                 &aprs_enabled,            nullptr,      true,  false, upload_aprs},
    {"weatherbug",           &weatherbug_enabled,      nullptr,      true,  false, upload_weatherbug},
    {"borgervejr",           &borgervejr_enabled,      nullptr,      true,  false, send_mail_report},
    {"idokep",               &idokep_enabled,          nullptr,      true,  false, upload_idokep},
    // clang-format on
};
static_assert(std::size(RUN_LIST) == 27);

void run_step_now(const run_step& step) {
  if (step.call() != 0) report_failure(step.name);
}

// The gate's time is kept whether or not the step behind it is enabled, and whatever it returned.
void run_gated_step(const run_step& step, const settings_record& settings, long long age, long long now) {
  if (age <= GATE_INTERVAL) return;
  alarm(STEP_LIMIT);
  if (settings.is_on(*step.enabled)) run_step_now(step);
  write_last_run(now);
}

bool is_due(const run_step& step, const settings_record& settings) {
  return settings.is_on(*step.enabled) && (step.user == nullptr || settings.text(*step.user).size() > 1);
}

}  // namespace

bool is_any_network_enabled(const settings_record& settings) {
  for (const run_step& step : RUN_LIST)
    if (settings.is_on(*step.enabled)) return true;
  return false;
}

void walk_run_list(const settings_record& settings, long long age, long long now) {
  for (const run_step& step : RUN_LIST) {
    if (step.behind_gate) {
      run_gated_step(step, settings, age, now);
    } else if (is_due(step, settings)) {
      if (step.own_alarm) alarm(STEP_LIMIT);
      run_step_now(step);
    }
  }
}

}  // namespace skypost
