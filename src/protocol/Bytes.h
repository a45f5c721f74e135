#pragma once

#include <cstdint>
#include <vector>

namespace ostrel {

// Raw bytes as they travel on the desk link.
using Bytes = std::vector<std::uint8_t>;

} // namespace ostrel
