#include "preview/text.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

#include "common/printable.h"

namespace skypost {
namespace {

std::string shown_value(const table_row& row) { return row.value.empty() ? "(empty)" : printable(row.value); }

void print_padded(std::ostream& out, const std::string& text, std::size_t width) {
  out << std::left << std::setw(static_cast<int>(width)) << text << "  ";
}

// Each column is as wide as its longest text, except for long values, which would push the sources too far right.
void print_table(std::ostream& out, const std::vector<table_row>& rows) {
  constexpr std::size_t LONG_VALUE = 20;
  std::size_t name_width = 0;
  std::size_t value_width = 0;
  for (const table_row& row : rows) {
    name_width = std::max(name_width, printable(row.name).size());
    if (const std::size_t width = shown_value(row).size(); width <= LONG_VALUE)
      value_width = std::max(value_width, width);
  }
  for (const table_row& row : rows) {
    print_padded(out << "    ", printable(row.name), name_width);
    if (row.source.empty()) {
      out << shown_value(row) << '\n';
    } else {
      print_padded(out, shown_value(row), value_width);
      out << printable(row.source) << '\n';
    }
  }
}

void print_missing(std::ostream& out, const std::vector<missing_value>& missing) {
  if (missing.empty()) return;
  out << "  Missing values:\n";
  std::vector<table_row> rows;
  rows.reserve(missing.size());
  for (const missing_value& value : missing) rows.push_back({value.name, value.reason});
  print_table(out, rows);
}

void print_step(std::ostream& out, const step_preview& step) {
  out << '\n' << step.network << " (" << step.name << ")\n";
  for (const std::string& place : step.where) out << "  " << step.how << ' ' << printable(place) << '\n';
  if (!step.position.empty()) out << "  Position " << step.position << '\n';
  if (step.would_be_sent()) out << "  Would be sent\n";
  for (const network_fault& fault : step.faults)
    out << (fault.weight == network_fault::stops ? "  NOT SENT: " : "  WARNING: ") << printable(fault.text)
        << '\n';
  print_table(out, rows_of(step.request.login));
  print_table(out, rows_of(step.request.parameters));
  for (const std::string& line : printable_lines(step.text))
    out << (line.empty() ? "" : "    ") << line << '\n';
  print_missing(out, step.missing);
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
