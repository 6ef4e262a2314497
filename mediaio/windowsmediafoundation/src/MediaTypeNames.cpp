#include "MediaTypeNames.h"

#include "MediaTypeNameTable.h"
#include "orxcore/Localizer.h"

namespace windowsmediafoundation {
namespace {

constexpr char kUnknownAudioFormatKey[] =
    "$$$/windowsmediafoundation/UnknownAudioFormat=Unknown Audio Format: @0";
constexpr char kUnknownVideoFormatKey[] =
    "$$$/windowsmediafoundation/UnknownVideoFormat=Unknown Video Format: @0";

orxcore::WString BracedGuid(const orxcore::Guid& guid) { return u"{" + guid.AsString() + u"}"; }

bool IsOnAttributeBase(const orxcore::Guid& guid) {
  return guid.data2 == kMediaTypeAttributeBase.data2 &&
         guid.data3 == kMediaTypeAttributeBase.data3 &&
         guid.data4 == kMediaTypeAttributeBase.data4;
}

// "'ABCD'" from the bytes of `code`, most significant first; control bytes
// become spaces and bytes outside ASCII question marks.
orxcore::WString QuotedFourCharacters(std::uint32_t code) {
  orxcore::WString text = u"'";
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto byte = static_cast<std::uint8_t>(code >> shift);
    if (byte < 32) {
      text += u' ';
    } else if (byte >= 128) {
      text += u'?';
    } else {
      text += static_cast<char16_t>(byte);
    }
  }
  return text + u"'";
}

const MediaTypeNameRow* FirstRowWith(const orxcore::Guid& guid) {
  for (const MediaTypeNameRow& row : MediaTypeNameTable()) {
    if (row.guid == guid) return &row;
  }
  return nullptr;
}

const MediaTypeNameRow* LastRowWith(const orxcore::Guid& guid) {
  const MediaTypeNameRow* last = nullptr;
  for (const MediaTypeNameRow& row : MediaTypeNameTable()) {
    if (row.guid == guid) last = &row;
  }
  return last;
}

}  // namespace

orxcore::WString UnknownAudioFormatText() {
  return orxcore::Localizer::Get().Localize(kUnknownAudioFormatKey);
}

orxcore::WString UnknownVideoFormatText() {
  return orxcore::Localizer::Get().Localize(kUnknownVideoFormatKey);
}

orxcore::WString DescribeAudioSubtype(const orxcore::Guid& subtype) {
  if (const MediaTypeNameRow* row = LastRowWith(subtype)) return row->name;
  return orxcore::ReplaceInString(UnknownAudioFormatText(), BracedGuid(subtype));
}

orxcore::WString DescribeVideoSubtype(const orxcore::Guid& subtype, std::uint32_t width,
                                      std::uint32_t height, std::uint32_t rateNumerator,
                                      std::uint32_t rateDenominator) {
  orxcore::WString description;
  if (const MediaTypeNameRow* row = FirstRowWith(subtype)) {
    description = row->name;
  } else {
    description = orxcore::ReplaceInString(UnknownVideoFormatText(),
                                           IsOnAttributeBase(subtype)
                                               ? QuotedFourCharacters(subtype.data1)
                                               : BracedGuid(subtype));
  }
  if (width != 0 && height != 0) {
    description += u", " + orxcore::NumberToString(std::int64_t{width}) + u" x " +
                   orxcore::NumberToString(std::int64_t{height});
  }
  if (rateNumerator != rateDenominator) {
    const double rate = static_cast<double>(rateNumerator) / rateDenominator;
    description += u", (" + orxcore::NumberToString(rate, 1, 2) + u")";
  }
  return description;
}

}  // namespace windowsmediafoundation
