#include "support/MessageTable.h"

#include <gtest/gtest.h>

namespace t4 {
namespace {

TEST(MessageTable, HoldsTheFiveGermanTextsWithUmlautsIntact) {
  struct Case {
    int32_t id;
    std::u16string text;
  };
  const Case cases[] = {
      {10, u"Der Name existiert bereits.||Bitte w\u00e4hlen Sie einen anderen Namen."},
      {20, u"Fehler beim Zugriff auf Outlook.||Bitte starten Sie die Anwendung erneut."},
      {30, u"Das Outlook-Element wurde nicht gefunden."},
      {40, u"Das Dateiformat wird nicht unterst\u00fctzt."},
      {50, u"Fehler beim Erstellen der Datei:|#0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.id);
    auto text = MessageTable::Find(c.id);
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, c.text);
  }
  EXPECT_EQ(MessageTable::Rows().size(), 5u);
}

TEST(MessageTable, HasNoEnglishBlock) {
  for (int32_t id = 10010; id <= 10050; id += 10) {
    SCOPED_TRACE(id);
    EXPECT_FALSE(MessageTable::Find(id).has_value());
  }
}

}  // namespace
}  // namespace t4
