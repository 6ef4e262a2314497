// A plain-text table for benchmark output: a header row, then rows of cells,
// each column as wide as its widest cell, text left-aligned, numbers right.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace bench {

class Table {
 public:
  explicit Table(std::vector<std::string> header);

  void AddRow(std::vector<std::string> cells);
  void Print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> rows_;
};

// `value` with `decimals` digits after the point.
std::string Fixed(double value, int decimals);

// What a summary row's ratio is held to, if anything.
struct Goal {
  enum class Kind { kNone, kAtMost, kAtLeast };
  Kind kind = Kind::kNone;
  double limit = 0;
  static Goal AtMost(double limit) { return {Kind::kAtMost, limit}; }
  static Goal AtLeast(double limit) { return {Kind::kAtLeast, limit}; }
};

// One row for the summary table that ./scripts/bench gathers from every
// benchmark: benchmark, case, figure, reference figure, ratio (from
// `cells`), then the goal and whether `ratio` meets it. Printed as a
// tab-separated line that starts with "@summary".
void PrintSummaryRow(std::ostream& out, const std::vector<std::string>& cells, double ratio, Goal goal);

}  // namespace bench
