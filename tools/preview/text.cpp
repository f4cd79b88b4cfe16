#include "preview/text.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

#include "common/printable.h"

namespace skypost {
namespace {

struct table_row {
  std::string name;
  std::string value;
};

// Two columns, the first as wide as its longest name.
void print_table(std::ostream& out, const std::vector<table_row>& rows) {
  std::size_t width = 0;
  for (const table_row& row : rows) width = std::max(width, row.name.size());
  for (const table_row& row : rows)
    out << "    " << std::left << std::setw(static_cast<int>(width)) << row.name << "  " << row.value << '\n';
}

std::string shown(const std::string& value) { return value.empty() ? "(empty)" : printable(value); }

std::string number_of(const field_run& run) {
  const std::string first = std::to_string(run.first);
  return run.first == run.last ? first : first + '-' + std::to_string(run.last);
}

void print_parameters(std::ostream& out, const std::vector<request_parameter>& parameters) {
  std::vector<table_row> rows;
  for (const request_parameter& parameter : parameters) {
    if (!parameter.is_record()) {
      rows.push_back({printable(parameter.name), shown(parameter.value())});
      continue;
    }
    for (const field_run& run : runs_of(parameter))
      rows.push_back({printable(parameter.name) + ' ' + number_of(run), shown(run.value)});
  }
  print_table(out, rows);
}

void print_login(std::ostream& out, const std::vector<request_parameter>& login) {
  std::vector<table_row> rows(login.size());
  std::transform(login.begin(), login.end(), rows.begin(), [](const request_parameter& part) {
    return table_row{"(login) " + part.name, shown(part.value())};
  });
  print_table(out, rows);
}

void print_missing(std::ostream& out, const std::vector<missing_value>& missing) {
  if (missing.empty()) return;
  out << "  Missing values:\n";
  std::vector<table_row> rows(missing.size());
  std::transform(missing.begin(), missing.end(), rows.begin(), [](const missing_value& value) {
    return table_row{printable(value.what), printable(value.reason)};
  });
  print_table(out, rows);
}

void print_unset(std::ostream& out, const std::vector<std::string>& unset) {
  if (unset.empty()) return;
  out << "  Not set:";
  for (const std::string& name : unset) out << (&name == &unset.front() ? " " : ", ") << name;
  out << '\n';
}

void print_step(std::ostream& out, const step_preview& step) {
  out << '\n' << step.network << " (" << step.id << ")\n";
  for (const std::string& place : step.where) out << "  " << step.how << ' ' << printable(place) << '\n';
  if (step.would_be_sent()) out << "  Would be sent\n";
  for (const std::string& reason : step.obstacles) out << "  NOT SENT: " << printable(reason) << '\n';
  for (const std::string& reason : step.warnings) out << "  WARNING: " << printable(reason) << '\n';
  print_login(out, step.request.login);
  print_parameters(out, step.request.parameters);
  for (const std::string& line : printable_lines(step.text))
    out << (line.empty() ? "" : "    ") << line << '\n';
  print_missing(out, step.missing);
  print_unset(out, step.unset);
}

}  // namespace

void print_text(std::ostream& out, const preview_page& page) {
  out << "Settings: " << printable(page.settings) << '\n'
      << "Report:   " << printable(page.report) << '\n'
      << "Time:     " << page.time << '\n';
  for (const std::string& warning : page.warnings) out << "WARNING:  " << printable(warning) << '\n';
  if (page.steps.empty()) out << "\nNo network is switched on.\n";
  for (const step_preview& step : page.steps) print_step(out, step);
}

}  // namespace skypost
