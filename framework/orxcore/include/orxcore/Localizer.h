// Resolves localisation keys of the form "$$$/area/name=Default text".
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "orxcore/String.h"

namespace orxcore {

class Localizer {
 public:
  // The process-wide localiser.
  static Localizer& Get();

  // The translation loaded for the key's name, else the default text: all of
  // the literal after the first "=" (which may itself hold "=", quotes or
  // line breaks). Text without "=" is its own default.
  WString Localize(std::string_view keyAndDefault) const;

  // Loads "$$$/area/name=Translated text" lines (UTF-8), adding to or
  // replacing earlier translations. Returns false when the file cannot be
  // read. "\n" in a translation stands for a line break.
  bool LoadTranslations(const std::string& utf8Path);
  void SetTranslation(std::string_view key, WString text);
  void ClearTranslations();

  // Splits "$$$/area/name=Default" into its key and default text.
  static std::pair<std::string_view, std::string_view> SplitKey(std::string_view keyAndDefault);

 private:
  mutable std::mutex mutex_;
  std::map<std::string, WString, std::less<>> translations_;
};

}  // namespace orxcore
