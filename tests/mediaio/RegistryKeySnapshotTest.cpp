#include "RegistryKeySnapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "orxcore/WideChar.h"

namespace windowsmediafoundation {
namespace {

// A key tree under HKEY_CURRENT_USER\Software\AurivoxTest made for one test
// and deleted afterwards.
class RegistryKeySnapshotTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    path = L"Software\\AurivoxTest\\" + std::wstring(name.begin(), name.end());
    RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
    ASSERT_EQ(CreateKey(L""), ERROR_SUCCESS);
  }
  void TearDown() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, path.c_str());
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\AurivoxTest");  // only when empty
  }

  LONG CreateKey(const std::wstring& relative) {
    HKEY key = nullptr;
    const std::wstring full = relative.empty() ? path : path + L"\\" + relative;
    const LONG result = RegCreateKeyExW(HKEY_CURRENT_USER, full.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                        &key, nullptr);
    if (result == ERROR_SUCCESS) RegCloseKey(key);
    return result;
  }

  LONG SetValue(const std::wstring& relative, const wchar_t* name, DWORD type, const void* data, DWORD size) {
    const std::wstring full = relative.empty() ? path : path + L"\\" + relative;
    return RegSetKeyValueW(HKEY_CURRENT_USER, full.c_str(), name, type, data, size);
  }

  RegistryKeySnapshot Snapshot() const {
    return RegistryKeySnapshot(HKEY_CURRENT_USER, orxcore::FromWide(path.c_str()));
  }

  std::wstring path;
};

orxcore::WString W(const wchar_t* text) { return orxcore::FromWide(text); }

const RegistryValue* FindValue(const RegistryKeySnapshot& node, const wchar_t* name) {
  const auto found = std::find_if(node.values().begin(), node.values().end(),
                                  [&](const RegistryValue& value) { return value.name == W(name); });
  return found == node.values().end() ? nullptr : &*found;
}

const RegistryKeySnapshot* FindChild(const RegistryKeySnapshot& node, const wchar_t* name) {
  const auto found = std::find_if(node.children().begin(), node.children().end(),
                                  [&](const RegistryKeySnapshot& child) { return child.path() == W(name); });
  return found == node.children().end() ? nullptr : &*found;
}

TEST_F(RegistryKeySnapshotTest, ReadsSubKeysAndValuesAllTheWayDown) {
  const wchar_t text[] = L"Aurivox";
  const DWORD number = 0x01020304;
  const BYTE blob[] = {9, 8, 7};
  ASSERT_EQ(SetValue(L"", L"Name", REG_SZ, text, sizeof text), ERROR_SUCCESS);
  ASSERT_EQ(SetValue(L"", L"Count", REG_DWORD, &number, sizeof number), ERROR_SUCCESS);
  ASSERT_EQ(CreateKey(L"Alpha"), ERROR_SUCCESS);
  ASSERT_EQ(SetValue(L"Alpha", L"Blob", REG_BINARY, blob, sizeof blob), ERROR_SUCCESS);
  ASSERT_EQ(CreateKey(L"Beta\\Gamma"), ERROR_SUCCESS);

  RegistryKeySnapshot node = Snapshot();
  ASSERT_EQ(node.ReadKeyTree(), 0u);

  ASSERT_EQ(node.values().size(), 2u);
  const RegistryValue* name = FindValue(node, L"Name");
  ASSERT_NE(name, nullptr);
  EXPECT_EQ(name->type, static_cast<std::uint32_t>(REG_SZ));
  ASSERT_EQ(name->data.size(), sizeof text);
  EXPECT_EQ(std::wstring(reinterpret_cast<const wchar_t*>(name->data.data())), L"Aurivox");
  const RegistryValue* count = FindValue(node, L"Count");
  ASSERT_NE(count, nullptr);
  EXPECT_EQ(count->type, static_cast<std::uint32_t>(REG_DWORD));
  EXPECT_EQ(count->data, (std::vector<std::uint8_t>{4, 3, 2, 1}));

  ASSERT_EQ(node.children().size(), 2u);
  const RegistryKeySnapshot* alpha = FindChild(node, L"Alpha");
  ASSERT_NE(alpha, nullptr);
  EXPECT_EQ(alpha->parent(), node.key());
  ASSERT_EQ(alpha->values().size(), 1u);
  EXPECT_EQ(alpha->values()[0].data, (std::vector<std::uint8_t>{9, 8, 7}));
  EXPECT_TRUE(alpha->children().empty());

  const RegistryKeySnapshot* beta = FindChild(node, L"Beta");
  ASSERT_NE(beta, nullptr);
  ASSERT_EQ(beta->children().size(), 1u);
  EXPECT_EQ(beta->children()[0].path(), W(L"Gamma"));
  EXPECT_NE(beta->children()[0].key(), nullptr);
  EXPECT_TRUE(beta->values().empty());
}

TEST_F(RegistryKeySnapshotTest, AKeyThatCannotBeOpenedLeavesTheNodeEmpty) {
  RegistryKeySnapshot node(HKEY_CURRENT_USER, orxcore::FromWide((path + L"\\Missing").c_str()));
  EXPECT_EQ(node.ReadKeyTree(), static_cast<std::uint32_t>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(node.key(), nullptr);
  EXPECT_TRUE(node.children().empty());
  EXPECT_TRUE(node.values().empty());
}

}  // namespace
}  // namespace windowsmediafoundation
