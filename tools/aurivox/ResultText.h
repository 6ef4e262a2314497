// What the module's result codes mean, for messages a person reads.
#pragma once

namespace aurivox_tool {

const char* DescribeResult(int result);

}  // namespace aurivox_tool
