#include "orxcore/String.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <limits>

#include <utf8.h>

namespace orxcore {

std::string UTF16toStdString(std::u16string_view text) {
  // Paths are mostly ASCII, which is copied unit for unit up to the first
  // wider character.
  const auto wide = std::find_if(text.begin(), text.end(), [](char16_t c) { return c >= 0x80; });
  std::string out(text.begin(), wide);
  if (wide == text.end()) return out;
  out.reserve(out.size() + (text.size() - out.size()) * 3);
  auto in = std::back_inserter(out);
  for (auto i = static_cast<std::size_t>(wide - text.begin()); i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size() &&
        text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = 0xFFFD;
    }
    utf8::unchecked::append(c, in);
  }
  return out;
}

WString UTF8to16(std::string_view text) {
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
  WString out;
  out.reserve(valid.size());
  utf8::unchecked::utf8to16(valid.begin(), valid.end(), std::back_inserter(out));
  return out;
}

WString AsciiToUTF16(const char* text, std::size_t length) {
  WString out(length, u'\0');
  for (std::size_t i = 0; i < length; ++i) {
    out[i] = static_cast<unsigned char>(text[i]);
  }
  return out;
}

WString AsciiToUTF16(std::string_view text) {
  return AsciiToUTF16(text.data(), text.size());
}

char16_t ToLowerCase(char16_t c) {
  if (c < 0x80) {
    return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
  }
  // Latin-1 capitals, but not the multiplication sign.
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<char16_t>(c + 32);
  // Latin Extended-A: capitals at even code points, with the run 0x139-0x148
  // and 0x179-0x17E at odd ones; U+0130 and U+0178 are special.
  if (c == 0x130) return u'i';
  if (c == 0x178) return 0xFF;
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) {
    return (c & 1) ? static_cast<char16_t>(c + 1) : c;
  }
  if (c >= 0x100 && c <= 0x17F) return (c & 1) ? c : static_cast<char16_t>(c + 1);
  // Greek and Cyrillic capitals.
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return static_cast<char16_t>(c + 32);
  if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 80);
  if (c >= 0x410 && c <= 0x42F) return static_cast<char16_t>(c + 32);
  return c;
}

WString ToLowerCase(std::u16string_view text) {
  WString out(text);
  for (char16_t& c : out) c = ToLowerCase(c);
  return out;
}

WString ReplaceInString(std::u16string_view text, const WString& arg0,
                        const WString& arg1, const WString& arg2,
                        const WString& arg3, const WString& arg4,
                        const WString& arg5, const WString& arg6,
                        const WString& arg7, const WString& arg8,
                        const WString& arg9) {
  const std::array<const WString*, 10> args = {&arg0, &arg1, &arg2, &arg3, &arg4,
                                               &arg5, &arg6, &arg7, &arg8, &arg9};
  WString out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'@' && i + 1 < text.size() && text[i + 1] >= u'0' &&
        text[i + 1] <= u'9') {
      const WString& arg = *args[text[i + 1] - u'0'];
      if (!arg.empty()) {
        out += arg;
        ++i;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

WString NumberToString(std::int64_t value) {
  return AsciiToUTF16(std::to_string(value));
}

WString NumberToString(double value, int minDigits, int maxDigits) {
  if (maxDigits < 0) maxDigits = 0;
  if (minDigits < 0) minDigits = 0;
  if (minDigits > maxDigits) minDigits = maxDigits;
  char buffer[400];
  const int n = std::snprintf(buffer, sizeof buffer, "%.*f", maxDigits, value);
  std::string text(buffer, n > 0 ? static_cast<std::size_t>(n) : 0);
  const std::size_t point = text.find('.');
  if (point != std::string::npos) {
    std::size_t keep = text.size();
    while (keep > point + 1 + static_cast<std::size_t>(minDigits) && text[keep - 1] == '0') --keep;
    if (keep == point + 1) --keep;  // no digits left after the point: drop it too
    text.resize(keep);
  }
  return AsciiToUTF16(text);
}

bool StringToNumber(std::u16string_view text, std::int32_t& value) {
  std::size_t i = 0;
  bool negative = false;
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) negative = text[i++] == u'-';
  if (i == text.size()) return false;
  std::int64_t result = 0;
  for (; i < text.size(); ++i) {
    if (text[i] < u'0' || text[i] > u'9') return false;
    result = result * 10 + (text[i] - u'0');
    if (result > std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1) return false;
  }
  if (negative) result = -result;
  if (result > std::numeric_limits<std::int32_t>::max()) return false;
  value = static_cast<std::int32_t>(result);
  return true;
}

}  // namespace orxcore
