#include <gtest/gtest.h>

#include "SessionFixture.h"
#include "masterlist/Masterlist00.h"
#include "masterlist/Masterlist02.h"
#include "masterlist/Masterlist03.h"
#include "masterlist/Masterlist97.h"
#include "model/internal/CategoriesAccess.h"
#include "rules/Masterlist07.h"
#include "session/internal/ApplicationAccess.h"
#include "support/ClientVersion.h"

namespace t4::test {
namespace {

const std::u16string kKey11 = u"Software\\Microsoft\\Office\\11.0\\Outlook\\Categories|Masterlist";
const std::u16string kKey10 = u"Software\\Microsoft\\Office\\10.0\\Outlook\\Categories|Masterlist";
const std::u16string kKey9 = u"Software\\Microsoft\\Office\\9.0\\Outlook\\Categories|Masterlist";
const std::u16string kKey8 = u"Software\\Microsoft\\Office\\8.0\\Outlook\\Categories|Masterlist";

using Bytes = std::vector<uint8_t>;

bool EndsWith(const std::u16string& text, const std::u16string& tail) {
  return text.size() >= tail.size() &&
         text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

class SessionTest : public SessionFixture {
 protected:
  FakeRulesReader& Reader() { return *ports.rules->reader; }

  FakePorts ports;
};

TEST_F(SessionTest, InitializeFollowsQuitAndSetsTheVersion) {
  Init(u"11.0.0.8312");
  EXPECT_EQ(ClientVersion::Current().Major(), 11);
  EXPECT_EQ(outlook->advised, 1);
  EXPECT_EQ(ApplicationAccess::OutlookApp(*app), outlook);
}

TEST_F(SessionTest, RulesAreNotSupportedBeforeOutlook2007) {
  for (const char16_t* version : {u"8.5", u"9.0", u"10.0", u"11.0"}) {
    SCOPED_TRACE(Utf::ToUtf8(version));
    Init(version);
    EXPECT_FALSE(app->RulesSupported());
    EXPECT_EQ(ApplicationAccess::RulesReader(*app), nullptr);
    EXPECT_EQ(ApplicationAccess::CategoryRules(*app), nullptr);
  }
  EXPECT_EQ(ports.rules->readersCreated, 0);
  EXPECT_EQ(Reader().rulesHandedOut, 0);
}

TEST_F(SessionTest, Outlook2007CreatesTheRulesComponentAndReadsTheRules) {
  Init(u"12.0.4518");
  EXPECT_TRUE(app->RulesSupported());
  EXPECT_EQ(ports.rules->readersCreated, 1);
  EXPECT_EQ(Reader().rulesHandedOut, 1);
  EXPECT_EQ(ApplicationAccess::CategoryRules(*app), Reader().rulesObject);
}

TEST_F(SessionTest, InitializeDoesNotLogOn) {
  Init(u"11.0");
  EXPECT_EQ(ports.mapi->counters->sessions, 0);
}

TEST_F(SessionTest, InitializeWithAnObjectWithoutEventsFails) {
  outlook = std::make_shared<FakeOutlook>(u"11.0");
  outlook->hasEvents = false;
  try {
    app->Initialize(outlook);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kObjectDoesNotSupportEvents);
    EXPECT_TRUE(EndsWith(e.Source(), u"Application.Initialize (0)")) << Utf::ToUtf8(e.Source());
  }
  EXPECT_EQ(ApplicationAccess::OutlookApp(*app), nullptr);
}

TEST_F(SessionTest, InitializeWithNothingFailsWithObjectVariableNotSet) {
  try {
    app->Initialize(nullptr);
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kObjectVariableNotSet);
  }
}

TEST_F(SessionTest, RulesComponentThatCannotBeCreatedFailsInitialize) {
  ports.rules->failCreate = true;
  try {
    Init(u"12.0");
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), static_cast<int32_t>(0x80040154));
    EXPECT_TRUE(EndsWith(e.Source(), u"Application.Initialize (0)")) << Utf::ToUtf8(e.Source());
  }
  EXPECT_TRUE(app->RulesSupported());
  EXPECT_EQ(ApplicationAccess::CategoryRules(*app), nullptr);
}

TEST_F(SessionTest, QuitReleasesOutlookButTheCollectionsKeepTheirData) {
  ports.registry->values[kKey8] = std::u16string(u"Business;Private;");
  Init(u"8.0");
  app->ReadMasterlist();
  outlook->FireQuit();
  EXPECT_EQ(ApplicationAccess::OutlookApp(*app), nullptr);
  EXPECT_EQ(outlook->unadvised, 1);
  EXPECT_EQ(outlook.use_count(), 1);  // nobody but the test holds it
  EXPECT_EQ(CategoryNames(), (Names{u"", u"Business", u"Private"}));
  // The client is expected to call Terminate; Quit alone leaves the session.
  EXPECT_EQ(ports.mapi->counters->logoffs, 0);
}

TEST_F(SessionTest, QuitAfterTheApplicationIsGoneDoesNothing) {
  Init(u"11.0");
  auto handler = outlook->quit;
  app->Terminate();
  app.reset();
  ASSERT_FALSE(outlook->quit);  // Terminate let go of the subscription
  if (handler) handler();       // a late event from the client is harmless
}

TEST_F(SessionTest, ReadMasterlistLogsOnOnceAndClearsTheJournal) {
  Init(u"11.0");
  ReadList({u"Old"});
  cats->Add(u"New", true);
  ASSERT_TRUE(app->UndoIsPossible());
  app->ReadMasterlist();
  app->ReadMasterlist();
  EXPECT_EQ(ports.mapi->counters->sessions, 1);
  EXPECT_EQ(ports.mapi->counters->logons, 1);
  EXPECT_FALSE(app->UndoIsPossible());
  app->Terminate();
  EXPECT_EQ(ports.mapi->counters->logoffs, 1);
}

TEST_F(SessionTest, EmptyStoredListGivesOnlyTheDefaultCategory) {
  Init(u"11.0");
  app->ReadMasterlist();
  ASSERT_EQ(cats->Count(true), 1);
  auto def = cats->DefaultCategory(true);
  EXPECT_EQ(def->Name(), u"");
  EXPECT_FALSE(def->InMasterlist());
  EXPECT_EQ(def->Color(), -2);
  EXPECT_EQ(def->ShortCut(), -2);
}

TEST_F(SessionTest, EachVersionReadsItsOwnStore) {
  ports.registry->values[kKey8] = std::u16string(u"Eight;");
  ports.registry->values[kKey9] = std::u16string(u"Nine;");
  ports.registry->values[kKey10] = Bytes{'T', 0, 'e', 0, 'n', 0, 0, 0};
  ports.registry->values[kKey11] = Bytes{'E', 0, 'l', 0, 'f', 0, ';', 0, 0, 0};
  Reader().list->entries = {{u"{A}", u"Twelve", 7, 0}};
  struct Case {
    const char16_t* version;
    Names names;
  };
  const Case cases[] = {
      {u"8.5", {u"", u"Eight"}}, {u"9.0", {u"", u"Nine"}},         {u"10.0", {u"", u"Ten"}},
      {u"11.0", {u"", u"Elf"}},  {u"12.0.4518", {u"", u"Twelve"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.version));
    Init(c.version);
    app->ReadMasterlist();
    EXPECT_EQ(CategoryNames(), c.names);
  }
  EXPECT_EQ(Cat(u"Twelve")->CategoryID(), u"{A}");
  EXPECT_EQ(Cat(u"Twelve")->Color(), 7);
}

TEST_F(SessionTest, StoreFactoryPicksTheClassByVersion) {
  struct Case {
    const char16_t* version;
    const char* store;
  };
  const Case cases[] = {{u"8.5", "97"},  {u"9.0", "00"},    {u"10.0", "02"},   {u"11.0", "03"},
                        {u"12.0", "07"}, {u"14.0", "none"}, {u"13.0", "none"}, {u"1", "none"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(Utf::ToUtf8(c.version));
    Init(c.version);
    auto store = ApplicationAccess::MasterlistStore(*app);
    const char* kind = !store                                     ? "none"
                       : dynamic_cast<Masterlist97*>(store.get()) ? "97"
                       : dynamic_cast<Masterlist00*>(store.get()) ? "00"
                       : dynamic_cast<Masterlist02*>(store.get()) ? "02"
                       : dynamic_cast<Masterlist03*>(store.get()) ? "03"
                       : dynamic_cast<Masterlist07*>(store.get()) ? "07"
                                                                  : "other";
    EXPECT_STREQ(kind, c.store);
  }
}

TEST_F(SessionTest, UnsupportedVersionFailsTheReadWithObjectVariableNotSet) {
  Init(u"14.0");
  EXPECT_FALSE(app->RulesSupported());
  try {
    app->ReadMasterlist();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), RunTimeError::kObjectVariableNotSet);
    EXPECT_TRUE(EndsWith(e.Source(), u"Application.ReadMasterlist (0)")) << Utf::ToUtf8(e.Source());
  }
  EXPECT_FALSE(app->Changed());
}

TEST_F(SessionTest, ReadBeforeInitializeFails) {
  EXPECT_THROW(app->ReadMasterlist(), Error);
}

TEST_F(SessionTest, ChangedIsFalseAfterAReadThatFailedHalfWay) {
  Init(u"12.0");
  ReadList({u"Something"});
  cats->Add(u"Unsaved", true);
  ASSERT_TRUE(app->Changed());
  // The ";" inside the second name shifts the fields: its colour field
  // then holds a number too large for 32 bits, which stops the parser.
  Reader().list->entries = {{u"{A}", u"Work", 1, 0}, {u"{B}", u"B;99999999999;0", 1, 0}};
  try {
    app->ReadMasterlist();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 6);
    EXPECT_TRUE(EndsWith(e.Source(), u"Application.ReadMasterlist (0)")) << Utf::ToUtf8(e.Source());
  }
  EXPECT_FALSE(app->Changed());
  EXPECT_FALSE(CategoriesAccess::IsReading(*cats));
  EXPECT_FALSE(CategoriesAccess::Importing(*cats));
  EXPECT_EQ(CategoryNames(), (Names{u"", u"Work"}));
}

TEST_F(SessionTest, FailedLogonEndsTheReadLabelled) {
  ports.mapi->counters->failLogon = true;
  Init(u"11.0");
  try {
    app->ReadMasterlist();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), static_cast<int32_t>(0x80040111));
    EXPECT_NE(e.Source().find(u"Application.Logon"), std::u16string::npos)
        << Utf::ToUtf8(e.Source());
    EXPECT_TRUE(EndsWith(e.Source(), u"Application.ReadMasterlist (0)"));
  }
}

}  // namespace
}  // namespace t4::test
