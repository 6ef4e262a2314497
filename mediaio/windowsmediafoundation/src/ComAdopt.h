// Taking ownership of a COM object that was just created with a reference
// count of 1.
#pragma once

#include <wrl/client.h>

namespace windowsmediafoundation {

// A ComPtr that holds the creation reference of `created` and no other.
// ComPtr::Attach would do, but mingw-w64's Attach adds a reference of its
// own, which would leak the object.
template <typename T>
Microsoft::WRL::ComPtr<T> AdoptComObject(T* created) {
  Microsoft::WRL::ComPtr<T> owner(created);
  if (created) created->Release();
  return owner;
}

}  // namespace windowsmediafoundation
