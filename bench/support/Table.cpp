#include "Table.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <utility>

namespace bench {
namespace {

// A number and nothing else ("10 min" is text).
bool LooksNumeric(const std::string& cell) {
  if (cell.empty()) return false;
  char* end = nullptr;
  std::strtod(cell.c_str(), &end);
  return end == cell.c_str() + cell.size();
}

}  // namespace

Table::Table(std::vector<std::string> header) { rows_.push_back(std::move(header)); }

void Table::AddRow(std::vector<std::string> cells) {
  cells.resize(rows_.front().size());
  rows_.push_back(std::move(cells));
}

void Table::Print(std::ostream& out) const {
  std::vector<std::size_t> widths(rows_.front().size(), 0);
  for (const auto& row : rows_) {
    for (std::size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], row[c].size());
  }
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    const auto& row = rows_[r];
    for (std::size_t c = 0; c < row.size(); ++c) {
      const std::string padding(widths[c] - row[c].size(), ' ');
      const bool right = r > 0 && LooksNumeric(row[c]);
      out << (c == 0 ? "" : "  ") << (right ? padding + row[c] : row[c] + padding);
    }
    out << '\n';
    if (r == 0) {
      for (std::size_t c = 0; c < widths.size(); ++c) {
        out << (c == 0 ? "" : "  ") << std::string(widths[c], '-');
      }
      out << '\n';
    }
  }
}

std::string Fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

void PrintSummaryRow(std::ostream& out, const std::vector<std::string>& cells, double ratio, Goal goal) {
  out << "@summary";
  for (const std::string& cell : cells) out << '\t' << cell;
  switch (goal.kind) {
    case Goal::Kind::kNone: out << "\t-\t-"; break;
    case Goal::Kind::kAtMost: out << "\t<= " << Fixed(goal.limit, 2) << (ratio <= goal.limit ? "\tyes" : "\tno"); break;
    case Goal::Kind::kAtLeast: out << "\t>= " << Fixed(goal.limit, 2) << (ratio >= goal.limit ? "\tyes" : "\tno"); break;
  }
  out << '\n';
}

}  // namespace bench
