#include "orxcore/Trace.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

#include "TracePlatform.h"

namespace orxcore {
namespace {

struct Rule {
  std::string pattern;
  int level;
};

struct TraceConfig {
  std::mutex mutex;
  std::vector<Rule> rules;
  std::atomic<std::uint32_t> changeCount{1};
};

bool Matches(std::string_view pattern, std::string_view text) {
  // Glob match with "*" only; iterative with one back-track point.
  std::size_t p = 0, t = 0, star = std::string_view::npos, mark = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::vector<Rule> ParseRules(std::string_view rules) {
  std::vector<Rule> parsed;
  while (!rules.empty()) {
    const std::size_t end = rules.find_first_of(",;");
    std::string_view rule = rules.substr(0, end);
    rules = end == std::string_view::npos ? std::string_view{} : rules.substr(end + 1);
    while (!rule.empty() && rule.front() == ' ') rule.remove_prefix(1);
    while (!rule.empty() && rule.back() == ' ') rule.remove_suffix(1);
    if (rule.empty()) continue;
    const std::size_t equals = rule.rfind('=');
    int level = 7;  // a bare category switches on everything up to the finest level
    if (equals != std::string_view::npos) {
      level = std::atoi(std::string(rule.substr(equals + 1)).c_str());
      rule = rule.substr(0, equals);
    }
    parsed.push_back({std::string(rule), level});
  }
  return parsed;
}

TraceConfig& Config() {
  static TraceConfig* config = [] {
    auto* c = new TraceConfig;  // never destroyed: traces may run at exit
    if (const char* env = std::getenv("AURIVOX_TRACE")) c->rules = ParseRules(env);
    return c;
  }();
  return *config;
}

}  // namespace

bool TraceEnabled(std::string_view category, int level) {
  TraceConfig& config = Config();
  std::lock_guard<std::mutex> lock(config.mutex);
  bool enabled = false;
  for (const Rule& rule : config.rules) {
    if (Matches(rule.pattern, category)) enabled = level <= rule.level;
  }
  return enabled;
}

std::uint32_t TraceChangeCount() { return Config().changeCount.load(std::memory_order_acquire); }

void SetTraceConfiguration(std::string_view rules) {
  TraceConfig& config = Config();
  {
    std::lock_guard<std::mutex> lock(config.mutex);
    config.rules = ParseRules(rules);
  }
  config.changeCount.fetch_add(1, std::memory_order_acq_rel);
}

void TraceWrite(std::string_view message) {
  std::fwrite(message.data(), 1, message.size(), stderr);
  std::fflush(stderr);
  WriteToDebugger(message);
}

bool TraceSite::Enabled() {
  const std::uint64_t count = TraceChangeCount();
  std::uint64_t state = state_.load(std::memory_order_acquire);
  if ((state >> 1) != count) {
    state = (count << 1) | (TraceEnabled(category_, level_) ? 1 : 0);
    state_.store(state, std::memory_order_release);
  }
  return state & 1;
}

void TraceSite::WriteLine(std::string_view line) {
  if (!Enabled()) return;
  std::string message(line);
  message += "\r\n";
  TraceWrite(message);
}

}  // namespace orxcore
