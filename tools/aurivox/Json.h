// The tool's --json output, built with nlohmann-json.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace aurivox_tool {

// Objects keep their keys in the order they were added, as a reader of the
// output expects them.
using Json = nlohmann::ordered_json;

// `value` as JSON text on one line. A file name that is not valid UTF-8 (a
// POSIX name may hold any bytes) has the bad bytes shown as U+FFFD rather
// than losing the whole line.
std::string JsonLine(const Json& value);

// `seconds` rounded to `decimals` places, so a time reads "0.25", not the
// nearest binary fraction.
double RoundedSeconds(double seconds, int decimals);

}  // namespace aurivox_tool
