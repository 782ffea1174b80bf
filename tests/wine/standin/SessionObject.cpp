#include "SessionObject.h"

#include "Mailbox.h"
#include "MapiFolderObject.h"
#include "MapiStoreObject.h"
#include "StandInErrors.h"
#include "StandInState.h"

namespace t4standin {

namespace {

enum : DISPID {
  kLogon = 1,
  kLogoff,
  kLoggedOn,
  kGetFolderFromID,
  kGetStoreFromID,
  kCompareEntryIDs,
};

constexpr DispatchMember kMembers[] = {
    {L"Logon", kLogon, kRead, 0, 6},
    {L"Logoff", kLogoff, kRead, 0, 0},
    {L"LoggedOn", kLoggedOn, kRead, 0, 0},
    {L"GetFolderFromID", kGetFolderFromID, kRead, 1, 2},
    {L"GetStoreFromID", kGetStoreFromID, kRead, 1, 1},
    {L"CompareEntryIDs", kCompareEntryIDs, kRead, 2, 2},
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
    case kGetFolderFromID:
      return GetFolderFromID(call);
    case kGetStoreFromID:
      return GetStoreFromID(call);
    case kCompareEntryIDs: {
      std::wstring a;
      std::wstring b;
      HRESULT hr = call.GetString(0, &a);
      if (SUCCEEDED(hr)) hr = call.GetString(1, &b);
      if (FAILED(hr)) return hr;
      return call.ReturnBool(Mailbox::SameId(a, b));
    }
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

HRESULT SessionObject::GetFolderFromID(Invocation& call) {
  std::wstring folderId;
  std::wstring storeId;
  HRESULT hr = call.GetString(0, &folderId);
  if (SUCCEEDED(hr) && !call.IsMissing(1)) hr = call.GetString(1, &storeId);
  if (FAILED(hr)) return hr;
  const Mailbox& mailbox = Mailbox::Get();
  std::shared_ptr<MailStore> store;
  if (!storeId.empty()) {
    store = mailbox.FindStore(storeId);
    if (!store) return call.Fail(kNotFound, L"The store is not in this session.");
  }
  std::shared_ptr<MailFolder> folder = mailbox.FindFolder(folderId, store);
  if (!folder) return call.Fail(kNotFound, L"The folder is not in this session.");
  return call.ReturnObject(MapiFolderObject::Create(std::move(folder), this));
}

HRESULT SessionObject::GetStoreFromID(Invocation& call) {
  std::wstring storeId;
  HRESULT hr = call.GetString(0, &storeId);
  if (FAILED(hr)) return hr;
  std::shared_ptr<MailStore> store = Mailbox::Get().FindStore(storeId);
  if (!store) return call.Fail(kNotFound, L"The store is not in this session.");
  return call.ReturnObject(MapiStoreObject::Create(std::move(store), this));
}

}  // namespace t4standin
