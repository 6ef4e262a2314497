// Wide (UTF-16) strings of the host framework and the conversions the module
// needs between them and narrow UTF-8 text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orxcore {

// The framework's wide string. UTF-16 on every platform, so that paths and
// messages read the same natively and on Windows.
using WString = std::u16string;

// UTF-16 to UTF-8. Unpaired surrogates become U+FFFD rather than failing.
std::string UTF16toStdString(std::u16string_view text);

// UTF-8 to UTF-16. Invalid sequences become U+FFFD rather than failing.
WString UTF8to16(std::string_view text);

// Widens exactly `length` bytes of ASCII text.
WString AsciiToUTF16(const char* text, std::size_t length);
WString AsciiToUTF16(std::string_view text);

// Lower-cases with the simple one-to-one mappings of the Latin, Greek and
// Cyrillic letters, so the result has the same length as the input.
WString ToLowerCase(std::u16string_view text);
char16_t ToLowerCase(char16_t c);

// Fills the placeholders "@0" to "@9" with the matching argument. A
// placeholder whose argument is empty stays in the text as it is.
WString ReplaceInString(std::u16string_view text, const WString& arg0,
                        const WString& arg1 = {}, const WString& arg2 = {},
                        const WString& arg3 = {}, const WString& arg4 = {},
                        const WString& arg5 = {}, const WString& arg6 = {},
                        const WString& arg7 = {}, const WString& arg8 = {},
                        const WString& arg9 = {});

// Decimal text of a number. A floating-point value is rounded to
// `maxDigits` after the point, then trailing zeros are dropped down to
// `minDigits`: (25.0, 1, 2) gives "25.0", (29.97003, 1, 2) gives "29.97".
WString NumberToString(std::int64_t value);
WString NumberToString(double value, int minDigits, int maxDigits);

// Parses a whole string as a decimal integer (optional sign). Returns false,
// leaving `value` alone, when the text is empty, not a number or too large.
bool StringToNumber(std::u16string_view text, std::int32_t& value);

}  // namespace orxcore
