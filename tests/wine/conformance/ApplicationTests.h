#pragma once

namespace t4test {

// Application's QueryInterface, identity and reference counts, ISupportErrorInfo
// and IProvideClassInfo2.
void TestApplicationIdentity();

// Application's IDispatch from the type library, and the _ILanguage view.
void TestApplicationDispatch();

// Application's connection point for __Application: Advise, Unadvise,
// cookies, EnumConnectionPoints, and the object kept alive by the point.
void TestApplicationConnectionPoint();

// The library bound to the Outlook stand-in through the vtable (Initialize,
// ReadMasterlist, SaveChanges, Terminate): every reference to Outlook and
// every object of the DLL released afterwards; then the rules component on
// its own (CategoryRulesTests.h).
void TestOutlookSession();

}  // namespace t4test
