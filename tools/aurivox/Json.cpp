#include "Json.h"

#include <cmath>

namespace aurivox_tool {

std::string JsonLine(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

double RoundedSeconds(double seconds, int decimals) {
  const double scale = std::pow(10.0, decimals);
  return std::round(seconds * scale) / scale;
}

}  // namespace aurivox_tool
