#include "preview/text.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

#include "common/printable.h"

namespace skypost {
namespace {

// Two columns, the first as wide as its longest name.
void print_table(std::ostream& out, const std::vector<table_row>& rows) {
  std::size_t width = 0;
  for (const table_row& row : rows) width = std::max(width, printable(row.name).size());
  for (const table_row& row : rows)
    out << "    " << std::left << std::setw(static_cast<int>(width)) << printable(row.name) << "  "
        << (row.value.empty() ? "(empty)" : printable(row.value)) << '\n';
}

void print_missing(std::ostream& out, const std::vector<missing_value>& missing) {
  if (missing.empty()) return;
  out << "  Missing values:\n";
  std::vector<table_row> rows;
  rows.reserve(missing.size());
  for (const missing_value& value : missing) rows.push_back({value.name, value.reason});
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
  print_table(out, rows_of(step.request.login));
  print_table(out, rows_of(step.request.parameters));
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
