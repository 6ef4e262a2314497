#include <windows.h>

#include "Environment.h"
#include "orxcore/String.h"
#include "orxcore/WideChar.h"

namespace aurivox_test {

void SetEnvironment(const std::string& name, const std::string& value) {
  SetEnvironmentVariableW(orxcore::AsWide(orxcore::UTF8to16(name)), orxcore::AsWide(orxcore::UTF8to16(value)));
}

ScopedTemporaryFolder::ScopedTemporaryFolder(const std::string& folder) : variable_("TMP") {
  wchar_t old[MAX_PATH + 1];
  const DWORD length = GetEnvironmentVariableW(L"TMP", old, MAX_PATH + 1);
  if (length > 0 && length <= MAX_PATH) previous_ = orxcore::UTF16toStdString(orxcore::FromWide(old, length));
  SetEnvironment(variable_, folder);
}

ScopedTemporaryFolder::~ScopedTemporaryFolder() { SetEnvironment(variable_, previous_); }

}  // namespace aurivox_test
