// The names of media types, subtypes, attribute keys, format types and
// containers, as {GUID, name} rows in lookup order.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "orxcore/Guid.h"
#include "orxcore/String.h"

namespace windowsmediafoundation {

struct MediaTypeNameRow {
  orxcore::Guid guid;
  orxcore::WString name;
};

constexpr std::uint32_t kMediaTypeNameCount = 476;

// Names repeat and so do GUIDs: the same identifier stands in several
// sections under different names, so the order of the rows decides which name
// a lookup returns. The last row is the all-zero GUID with an empty name.
// Built on first use and never changed afterwards.
const std::array<MediaTypeNameRow, kMediaTypeNameCount>& MediaTypeNameTable();

// {00000000-0000-0010-8000-00AA00389B71}: FourCC and wave-format-tag
// subtypes put their code in data1 of this GUID.
constexpr orxcore::Guid kMediaSubtypeBase{
    0x00000000, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

// {00000000-767A-494D-B478-F29D25DC9037}: the base of the attribute keys'
// row section; video subtypes on it are shown by their four characters.
constexpr orxcore::Guid kMediaTypeAttributeBase{
    0x00000000, 0x767A, 0x494D, {0xB4, 0x78, 0xF2, 0x9D, 0x25, 0xDC, 0x90, 0x37}};

constexpr std::size_t kColourSpaceNameCount = 5;

// Display names of the full-range RGB colour spaces a video frame can carry,
// from BT.709 to BT.2100 PQ. Built on first use like the table.
const std::array<orxcore::WString, kColourSpaceNameCount>& ColourSpaceNames();

}  // namespace windowsmediafoundation
