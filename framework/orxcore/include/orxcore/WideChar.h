// The thin bridge between the framework's UTF-16 strings and the wchar_t
// strings of Windows API calls. Include it only from Windows sources.
#pragma once

#include <string>

#include "orxcore/String.h"

namespace orxcore {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide characters are UTF-16");

inline const wchar_t* AsWide(const WString& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

inline WString FromWide(const wchar_t* text) {
  return text ? WString(reinterpret_cast<const char16_t*>(text)) : WString();
}

inline WString FromWide(const wchar_t* text, std::size_t length) {
  return WString(reinterpret_cast<const char16_t*>(text), length);
}

}  // namespace orxcore
