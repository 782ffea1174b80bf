#include "support/ErrorFrame.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/ErrorObject.h"
#include "support/Language.h"
#include "support/RunTimeError.h"

namespace t4 {
namespace {

// Three labelled procedures, the innermost raising a library error, as a
// host call would pass through them.
void Innermost() {
  Frame(u"Category", u"Name", [] { ErrorObject::RaiseCode(cmNameExist); });
}
void Middle() {
  Frame(u"CatsExternCsv", u"ICatsExtern_Import", [] { Innermost(); });
}
void Outer() {
  Frame(u"CatsExternBase", u"ImportMasterlist", [] { Middle(); });
}

TEST(ErrorFrame, LibraryErrorThroughThreeProceduresKeepsNumberAndTextAndGrowsTheTrail) {
  Language::SetLanguageID(1031);
  try {
    Outer();
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(static_cast<uint32_t>(e.Number()), 0xD080222Au);
    EXPECT_EQ(e.Description(),
              u"Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen Namen.");
    EXPECT_EQ(e.Source(),
              u"Tandrel4; Tandrel4.Category.Name (0); Tandrel4.CatsExternCsv.ICatsExtern_Import "
              u"(0); Tandrel4.CatsExternBase.ImportMasterlist (0)");
  }
}

TEST(ErrorFrame, ReturnsTheBodysValue) {
  const int v = Frame(u"C", u"P", [] { return 42; });
  EXPECT_EQ(v, 42);
  std::u16string text = u"x";
  std::u16string& ref = Frame(u"C", u"P", [&]() -> std::u16string& { return text; });
  EXPECT_EQ(&ref, &text);
}

TEST(ErrorFrame, CleanUpRunsBeforeTheErrorLeaves) {
  bool flagOn = false;
  bool flagWasOffWhenCaught = false;
  struct FlagOff {
    bool& flag;
    ~FlagOff() { flag = false; }
  };
  try {
    Frame(u"Application", u"ReadMasterlist", [&] {
      flagOn = true;
      FlagOff guard{flagOn};
      throw RunTimeError::Make(RunTimeError::kFileNotFound);
    });
  } catch (const Error& e) {
    flagWasOffWhenCaught = !flagOn;
    EXPECT_EQ(e.Number(), 53);
    EXPECT_EQ(e.Description(), u"File not found");
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.Application.ReadMasterlist (0)");
  }
  EXPECT_TRUE(flagWasOffWhenCaught);
}

TEST(ErrorFrame, ForeignExceptionsBecomeRunTimeErrors) {
  try {
    Frame(u"C", u"P", [] { throw std::bad_alloc(); });
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 7);
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.C.P (0)");
  }
  try {
    Frame(u"C", u"P", [] { throw std::out_of_range("index"); });
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 51);
  }
  try {
    Frame(u"C", u"P", [] { throw 3; });
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 51);
  }
}

TEST(ErrorFrame, NumberZeroLeavesAs800A0000) {
  try {
    Frame(u"C", u"P", [] { throw Error(0, u"none"); });
  } catch (const Error& e) {
    EXPECT_EQ(static_cast<uint32_t>(e.Number()), 0x800A0000u);
    EXPECT_EQ(e.Description(), u"none");
  }
}

TEST(ErrorFrame, LineNumberAppearsInTheLabel) {
  try {
    Frame(u"C", u"P", 12, [] { throw RunTimeError::Make(5); });
  } catch (const Error& e) {
    EXPECT_EQ(e.Source(), u"Tandrel4; Tandrel4.C.P (12)");
  }
}

TEST(RunTimeError, NumbersAndTexts) {
  struct Case {
    int32_t number;
    const char16_t* text;
  };
  const Case cases[] = {
      {5, u"Invalid procedure call or argument"},
      {6, u"Overflow"},
      {9, u"Subscript out of range"},
      {13, u"Type mismatch"},
      {53, u"File not found"},
      {76, u"Path not found"},
      {91, u"Object variable or With block variable not set"},
      {424, u"Object required"},
      {457, u"This key is already associated with an element of this collection"},
      {1, u"Application-defined or object-defined error"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.number);
    const Error e = RunTimeError::Make(c.number);
    EXPECT_EQ(e.Number(), c.number);
    EXPECT_EQ(e.Description(), c.text);
    EXPECT_EQ(e.Source(), u"Tandrel4");
  }
  const Error pending = RunTimeError::NotImplemented(u"Application.ReadItems");
  EXPECT_EQ(static_cast<uint32_t>(pending.Number()), 0x80004001u);
  EXPECT_EQ(pending.Description(), u"Not implemented yet: Application.ReadItems");
}

}  // namespace
}  // namespace t4
