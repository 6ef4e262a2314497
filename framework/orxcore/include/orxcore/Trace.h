// The trace facility: dotted categories switched on per level, configured
// from the AURIVOX_TRACE environment variable, written to standard error and
// to the debugger.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace orxcore {

// True when `category` is switched on at `level` or above. A rule
// "pattern=level" switches on every category the pattern matches ("*" stands
// for any run of characters) for levels up to its own; the last matching
// rule decides.
bool TraceEnabled(std::string_view category, int level);

// Grows whenever the configuration changes, so trace sites can cache answers.
std::uint32_t TraceChangeCount();

// Replaces the configuration: rules separated by "," or ";", for example
// "windowsmediafoundation.MFReader.*=7". The variable AURIVOX_TRACE is read
// on first use.
void SetTraceConfiguration(std::string_view rules);

// Writes one message exactly as given (callers end their lines with "\r\n").
void TraceWrite(std::string_view message);

// A trace site: asks TraceEnabled again only when the configuration changed
// since it last asked, and keeps the answer in an atomic flag.
class TraceSite {
 public:
  TraceSite(const char* category, int level) : category_(category), level_(level) {}

  bool Enabled();
  const char* category() const { return category_; }

  // Writes `line` followed by "\r\n" when the site is enabled.
  void WriteLine(std::string_view line);

 private:
  const char* category_;
  int level_;
  std::atomic<std::uint64_t> state_{0};  // change count << 1 | enabled; 0 = never asked
};

}  // namespace orxcore
