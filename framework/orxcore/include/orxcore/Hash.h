// The framework's 128-bit hash mixer (XXH3-128), for keys that never leave
// the process.
#pragma once

#include <cstddef>
#include <memory>

#include "orxcore/Guid.h"

namespace orxcore {

class HashValueMixerState {
 public:
  HashValueMixerState();
  ~HashValueMixerState();
  HashValueMixerState(const HashValueMixerState&) = delete;
  HashValueMixerState& operator=(const HashValueMixerState&) = delete;

 private:
  friend void UpdateHashState(HashValueMixerState&, const void*, std::size_t);
  friend Guid GetHashResult(const HashValueMixerState&);
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// Feeds `length` bytes (0 is allowed) into the state.
void UpdateHashState(HashValueMixerState& state, const void* data, std::size_t length);

// The 128-bit result of everything fed so far, as a Guid.
Guid GetHashResult(const HashValueMixerState& state);

}  // namespace orxcore
