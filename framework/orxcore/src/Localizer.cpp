#include "orxcore/Localizer.h"

#include <fstream>

namespace orxcore {

Localizer& Localizer::Get() {
  static Localizer instance;
  return instance;
}

std::pair<std::string_view, std::string_view> Localizer::SplitKey(std::string_view keyAndDefault) {
  const std::size_t equals = keyAndDefault.find('=');
  if (equals == std::string_view::npos) return {keyAndDefault, keyAndDefault};
  return {keyAndDefault.substr(0, equals), keyAndDefault.substr(equals + 1)};
}

WString Localizer::Localize(std::string_view keyAndDefault) const {
  const auto [key, defaultText] = SplitKey(keyAndDefault);
  {
    std::lock_guard<std::mutex> lock(mutex_);
    const auto found = translations_.find(key);
    if (found != translations_.end()) return found->second;
  }
  return UTF8to16(defaultText);
}

void Localizer::SetTranslation(std::string_view key, WString text) {
  std::lock_guard<std::mutex> lock(mutex_);
  translations_.insert_or_assign(std::string(key), std::move(text));
}

void Localizer::ClearTranslations() {
  std::lock_guard<std::mutex> lock(mutex_);
  translations_.clear();
}

bool Localizer::LoadTranslations(const std::string& utf8Path) {
  std::ifstream in(utf8Path, std::ios::binary);
  if (!in) return false;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind("$$$/", 0) != 0) continue;
    const auto [key, text] = SplitKey(line);
    std::string unescaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == 'n') {
        unescaped += '\n';
        ++i;
      } else {
        unescaped += text[i];
      }
    }
    SetTranslation(key, UTF8to16(unescaped));
  }
  return true;
}

}  // namespace orxcore
