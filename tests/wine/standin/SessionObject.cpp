#include "SessionObject.h"

#include "StandInState.h"

namespace t4standin {

namespace {

enum : DISPID { kLogon = 1, kLogoff, kLoggedOn };

constexpr DispatchMember kMembers[] = {
    {L"Logon", kLogon, kRead, 0, 6},
    {L"Logoff", kLogoff, kRead, 0, 0},
    {L"LoggedOn", kLoggedOn, kRead, 0, 0},
};

// Logon([ProfileName], [Password], [ShowDialog], [NewSession],
//       [ParentWindowHandle], [NoMail]), in the words LastLogonArgs uses.
constexpr const wchar_t* kLogonArgs[] = {L"profile",    L"password", L"dialog",
                                         L"newsession", L"parent",   L"nomail"};

}  // namespace

SessionObject::SessionObject() : DispatchObject(kMembers) {
  ++StandInState::Get().sessionsCreated;
}

HRESULT SessionObject::Call(DISPID id, Invocation& call) {
  StandInState& state = StandInState::Get();
  switch (id) {
    case kLogon:
      return Logon(call);
    case kLogoff:
      ++state.logoffCount;
      loggedOn_ = false;
      return S_OK;
    case kLoggedOn:
      return call.ReturnBool(loggedOn_);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

// Each argument is written as "missing", "empty" (VT_EMPTY), "null" or its
// text (truth values as True/False), so a test sees both what was left out
// and what was passed: "profile=missing;...;newsession=False;...;nomail=True".
HRESULT SessionObject::Logon(Invocation& call) {
  std::wstring text;
  for (UINT i = 0; i < 6; ++i) {
    if (i > 0) text += L';';
    text += kLogonArgs[i];
    text += L'=';
    if (call.IsMissing(i)) {
      text += L"missing";
      continue;
    }
    const VARTYPE vt = V_VT(call.Arg(i)) & ~VT_BYREF;
    if (vt == VT_EMPTY) {
      text += L"empty";
    } else if (vt == VT_NULL) {
      text += L"null";
    } else {
      std::wstring value;
      HRESULT hr = call.GetString(i, &value);
      if (FAILED(hr)) return hr;
      text += value;
    }
  }
  StandInState& state = StandInState::Get();
  state.lastLogonArgs = text;
  ++state.logonCount;
  loggedOn_ = true;
  return S_OK;
}

}  // namespace t4standin
