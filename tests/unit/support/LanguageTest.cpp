#include <gtest/gtest.h>

#include "session/Application.h"
#include "session/FolderData.h"
#include "support/ErrorObject.h"
#include "support/Language.h"
#include "support/ProcessValues.h"
#include "support/RunTimeError.h"
#include "support/Transliteration.h"

namespace t4 {
namespace {

class LanguageSetting : public ::testing::Test {
 protected:
  void SetUp() override { ProcessValues::Reset(); }
  void TearDown() override { ProcessValues::Reset(); }
};

TEST_F(LanguageSetting, ReadsGermanBeforeAnyCall) {
  EXPECT_EQ(ProcessValues::LanguageId(), 0);
  EXPECT_EQ(Language::GetLanguageID(), 1031);
  EXPECT_EQ(ProcessValues::LanguageId(), 1031);
}

TEST_F(LanguageSetting, LanguageIdReadsGermanThroughApplicationBeforeAnyCall) {
  auto app = Application::Create();
  EXPECT_EQ(app->ToILanguage().LanguageID(), 1031);
}

TEST_F(LanguageSetting, OnlyGermanAndEnglishAreStored) {
  struct Case {
    int32_t set;
    int32_t stored;
  };
  const Case cases[] = {{1033, 1033}, {1031, 1031}, {1036, 1031},
                        {0, 1031},    {-1, 1031},   {1034, 1031}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.set);
    Language::SetLanguageID(1033);
    Language::SetLanguageID(c.set);
    EXPECT_EQ(Language::GetLanguageID(), c.stored);
  }
}

TEST_F(LanguageSetting, TextOffsetPerLanguage) {
  Language::SetLanguageID(1031);
  EXPECT_EQ(Language::GetTextOffset(), 0);
  Language::SetLanguageID(1033);
  EXPECT_EQ(Language::GetTextOffset(), 10000);
}

TEST_F(LanguageSetting, LoadTextLooksUpTheCurrentBlock) {
  Language::SetLanguageID(1031);
  EXPECT_EQ(Language::LoadText(30), u"Das Outlook-Element wurde nicht gefunden.");
  Language::SetLanguageID(1033);
  try {
    Language::LoadText(30);
    FAIL() << "the English block has no texts";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kResourceNotFound);
  }
  Language::SetLanguageID(1031);
  EXPECT_THROW(Language::LoadText(11), Error);
  EXPECT_THROW(Language::LoadText(INT32_MAX), Error);
}

TEST_F(LanguageSetting, EnglishEmptiesDescriptionsAndSwitchesTransliterationOn) {
  auto app = Application::Create();
  app->SetLanguageID(1033);
  EXPECT_EQ(ErrorObject::GetMessage(cmNameExist), u"");
  std::u16string name = u"B\u00fcro";
  Transliteration::TransliterateForLanguage(name);
  EXPECT_EQ(name, u"Buero");
}

TEST_F(LanguageSetting, GermanKeepsNamesUnchanged) {
  Language::SetLanguageID(1031);
  std::u16string name = u"\u00c4rger \u00fcber Ma\u00df";
  Transliteration::TransliterateForLanguage(name);
  EXPECT_EQ(name, u"\u00c4rger \u00fcber Ma\u00df");
}

TEST_F(LanguageSetting, ApplicationAndFolderDataShareTheProcessWideSetting) {
  auto app = Application::Create();
  auto folder = FolderData::Create();
  folder->SetLanguageID(1033);
  EXPECT_EQ(app->LanguageID(), 1033);
  app->SetLanguageID(1036);
  EXPECT_EQ(folder->LanguageID(), 1031);
  EXPECT_EQ(app->SupportedLanguages(), nullptr);
  EXPECT_EQ(folder->SupportedLanguages(), nullptr);
}

TEST(FolderData, FreshObjectIsEmpty) {
  auto f = FolderData::Create();
  EXPECT_EQ(f->EntryID(), u"");
  EXPECT_EQ(f->StoreID(), u"");
  EXPECT_EQ(f->Name(), u"");
  EXPECT_EQ(f->ItemsCount(), 0);
  EXPECT_FALSE(f->HasChilds());
}

TEST(FolderData, InitStoresAllFiveFields) {
  auto f = FolderData::Create();
  const std::u16string longId(4096, u'A');
  f->Init(longId, u"00FF", u"Posteingang \u00e4", -3, true);
  EXPECT_EQ(f->EntryID(), longId);
  EXPECT_EQ(f->StoreID(), u"00FF");
  EXPECT_EQ(f->Name(), u"Posteingang \u00e4");
  EXPECT_EQ(f->ItemsCount(), -3);
  EXPECT_TRUE(f->HasChilds());
  f->Init(u"", u"", u"", 0, false);
  EXPECT_EQ(f->EntryID(), u"");
  EXPECT_FALSE(f->HasChilds());
}

}  // namespace
}  // namespace t4
