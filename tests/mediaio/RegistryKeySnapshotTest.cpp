#include "RegistryKeySnapshot.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "orxcore/WideChar.h"

namespace windowsmediafoundation {
namespace {

// Every value below `node`, a line each under its key's path, in any order
// the registry enumerates them.
void Describe(const RegistryKeySnapshot& node, const std::string& prefix, std::set<std::string>& lines) {
  for (const RegistryValue& value : node.values()) {
    std::string line = prefix + orxcore::UTF16toStdString(value.name) + " " + std::to_string(value.type) + ":";
    for (const std::uint8_t byte : value.data) line += " " + std::to_string(byte);
    lines.insert(line);
  }
  for (const RegistryKeySnapshot& child : node.children()) {
    EXPECT_EQ(child.parent(), node.key());
    Describe(child, prefix + orxcore::UTF16toStdString(child.path()) + "\\", lines);
  }
}

TEST(RegistryKeySnapshot, ReadsSubKeysAndValuesAllTheWayDownOrNothing) {
  const std::wstring root = L"Software\\AurivoxTest\\RegistryKeySnapshot";
  RegDeleteTreeW(HKEY_CURRENT_USER, root.c_str());
  const wchar_t text[] = L"Av";
  const DWORD number = 0x01020304;
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, root.c_str(), L"Name", REG_SZ, text, sizeof text), ERROR_SUCCESS);
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, root.c_str(), L"Count", REG_DWORD, &number, 4), ERROR_SUCCESS);
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, (root + L"\\Alpha").c_str(), L"Blob", REG_BINARY, &number, 3),
            ERROR_SUCCESS);
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, (root + L"\\Beta\\Gamma").c_str(), L"Deep", REG_DWORD, &number, 4),
            ERROR_SUCCESS);

  RegistryKeySnapshot node(HKEY_CURRENT_USER, orxcore::FromWide(root.c_str()));
  EXPECT_EQ(node.ReadKeyTree(), 0u);
  std::set<std::string> lines;
  Describe(node, "", lines);
  EXPECT_EQ(lines, (std::set<std::string>{"Name 1: 65 0 118 0 0 0", "Count 4: 4 3 2 1", "Alpha\\Blob 3: 4 3 2",
                                          "Beta\\Gamma\\Deep 4: 4 3 2 1"}));

  RegistryKeySnapshot missing(HKEY_CURRENT_USER, orxcore::FromWide((root + L"\\Missing").c_str()));
  EXPECT_EQ(missing.ReadKeyTree(), static_cast<std::uint32_t>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(missing.key(), nullptr);
  EXPECT_TRUE(missing.children().empty() && missing.values().empty());
  RegDeleteTreeW(HKEY_CURRENT_USER, root.c_str());
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\AurivoxTest");  // only when empty
}

}  // namespace
}  // namespace windowsmediafoundation
