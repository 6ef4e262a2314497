// Readable, localised text for a Media Foundation HRESULT.
#pragma once

#include <cstdint>

#include "orxcore/String.h"
#include "orxcore/Trace.h"

namespace windowsmediafoundation {

// The localised message for `hr`: the named code's text, or the default
// "Media Foundation returned error 0x<HEX>" for codes without a name.
orxcore::WString MFErrorMessage(std::int32_t hr);

// Writes the line "Error: " followed by the message for `hr` to `site`, only
// when the site is enabled (so the message is not built otherwise).
void TraceMFError(orxcore::TraceSite& site, std::int32_t hr);

}  // namespace windowsmediafoundation
