#include "orxcore/Hash.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace orxcore {

struct HashValueMixerState::Impl {
  XXH3_state_t state;
};

HashValueMixerState::HashValueMixerState() : impl_(std::make_unique<Impl>()) {
  XXH3_128bits_reset(&impl_->state);
}

HashValueMixerState::~HashValueMixerState() = default;

void UpdateHashState(HashValueMixerState& state, const void* data, std::size_t length) {
  if (length == 0) return;  // an empty block changes nothing, but is allowed
  XXH3_128bits_update(&state.impl_->state, data, length);
}

Guid GetHashResult(const HashValueMixerState& state) {
  const XXH128_hash_t hash = XXH3_128bits_digest(&state.impl_->state);
  std::array<std::uint8_t, 16> bytes{};
  for (int i = 0; i < 8; ++i) {
    bytes[i] = static_cast<std::uint8_t>(hash.low64 >> (8 * i));
    bytes[8 + i] = static_cast<std::uint8_t>(hash.high64 >> (8 * i));
  }
  return Guid::FromBytes(bytes);
}

}  // namespace orxcore
