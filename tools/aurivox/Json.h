// Minimal JSON text building for the tool's --json output.
#pragma once

#include <string>
#include <string_view>

namespace aurivox_tool {

// A JSON string literal, quotes included, for UTF-8 text.
std::string JsonString(std::string_view text);

}  // namespace aurivox_tool
