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

}  // namespace bench
