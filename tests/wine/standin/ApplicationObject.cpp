#include "ApplicationObject.h"

#include <new>

#include "ConnectionPointEnum.h"
#include "Mailbox.h"
#include "NameSpaceObject.h"
#include "StandInModule.h"
#include "StandInState.h"
#include "StandInText.h"

namespace t4standin {

namespace {

enum : DISPID {
  kVersion = 1,
  kGetNamespace,
  kSession,
  kName,
  kFireQuit,
  kSinkCount,
  kReset,
  kSessionsCreated,
  kLogonCount,
  kLogoffCount,
  kLastLogonArgs,
  kLoadMailbox,
  kMailboxSaveCount,
  kOpenTables,
};

constexpr DispatchMember kMembers[] = {
    {L"Version", kVersion, kRead | kWrite, 0, 0},
    {L"GetNamespace", kGetNamespace, kRead, 1, 1},
    {L"Session", kSession, kRead, 0, 0},
    {L"Name", kName, kRead, 0, 0},
    {L"FireQuit", kFireQuit, kRead, 0, 0},
    {L"SinkCount", kSinkCount, kRead, 0, 0},
    {L"Reset", kReset, kRead, 0, 0},
    {L"SessionsCreated", kSessionsCreated, kRead, 0, 0},
    {L"LogonCount", kLogonCount, kRead, 0, 0},
    {L"LogoffCount", kLogoffCount, kRead, 0, 0},
    {L"LastLogonArgs", kLastLogonArgs, kRead, 0, 0},
    {L"LoadMailbox", kLoadMailbox, kRead, 1, 2},
    {L"MailboxSaveCount", kMailboxSaveCount, kRead, 0, 0},
    {L"OpenTables", kOpenTables, kRead, 0, 0},
};

// The dispatch id of ApplicationEvents(_11)::Quit.
constexpr DISPID kQuitEvent = 0xF007;

}  // namespace

ApplicationObject::ApplicationObject(bool withEvents)
    : DispatchObject(kMembers),
      withEvents_(withEvents),
      events_(this, DIID_ApplicationEvents),
      events11_(this, DIID_ApplicationEvents_11) {}

ApplicationObject::~ApplicationObject() {
  if (nameSpace_ != nullptr) nameSpace_->Release();
}

void* ApplicationObject::QueryOther(REFIID riid) noexcept {
  if (withEvents_ && IsEqualIID(riid, IID_IConnectionPointContainer)) {
    return static_cast<IConnectionPointContainer*>(this);
  }
  return nullptr;
}

HRESULT ApplicationObject::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  if (points == nullptr) return E_POINTER;
  *points = nullptr;
  IConnectionPoint* const list[] = {&events_, &events11_};
  try {
    *points = new ConnectionPointEnum(list, 2);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

HRESULT ApplicationObject::FindConnectionPoint(REFIID riid, IConnectionPoint** point) noexcept {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  if (IsEqualIID(riid, DIID_ApplicationEvents)) {
    *point = &events_;
  } else if (IsEqualIID(riid, DIID_ApplicationEvents_11)) {
    *point = &events11_;
  } else {
    return CONNECT_E_NOCONNECTION;
  }
  (*point)->AddRef();
  return S_OK;
}

HRESULT ApplicationObject::Call(DISPID id, Invocation& call) {
  StandInState& state = StandInState::Get();
  switch (id) {
    case kVersion:
      if (!call.IsPut()) return call.ReturnString(version_);
      return call.GetString(Invocation::kPutValue, &version_);
    case kGetNamespace:
      return GetNamespace(call);
    case kSession:
      if (nameSpace_ == nullptr) nameSpace_ = NameSpaceObject::Create();
      nameSpace_->AddRef();
      return call.ReturnObject(nameSpace_);
    case kName:
      return call.ReturnString(L"Outlook");
    case kFireQuit:
      events_.Fire(kQuitEvent);
      events11_.Fire(kQuitEvent);
      return S_OK;
    case kSinkCount:
      return call.ReturnLong(static_cast<long>(events_.SinkCount() + events11_.SinkCount()));
    case kReset:
      state.Reset();
      return S_OK;
    case kSessionsCreated:
      return call.ReturnLong(state.sessionsCreated);
    case kLogonCount:
      return call.ReturnLong(state.logonCount);
    case kLogoffCount:
      return call.ReturnLong(state.logoffCount);
    case kLastLogonArgs:
      return call.ReturnString(state.lastLogonArgs);
    case kLoadMailbox: {
      // LoadMailbox(FixtureFile, [SaveFolder])
      std::wstring path;
      std::wstring saveFolder;
      HRESULT hr = call.GetString(0, &path);
      if (SUCCEEDED(hr) && !call.IsMissing(1)) hr = call.GetString(1, &saveFolder);
      if (FAILED(hr)) return hr;
      const std::wstring error = Mailbox::Get().Load(path, saveFolder);
      if (!error.empty()) return call.Fail(E_INVALIDARG, error.c_str());
      return S_OK;
    }
    case kMailboxSaveCount:
      return call.ReturnLong(Mailbox::Get().saveCount);
    case kOpenTables:
      return call.ReturnLong(Mailbox::Get().tablesHoldingItem);
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

HRESULT ApplicationObject::GetNamespace(Invocation& call) {
  std::wstring type;
  HRESULT hr = call.GetString(0, &type);
  if (FAILED(hr)) return hr;
  if (!StandInText::EqualNoCase(type, L"MAPI")) {
    return call.Fail(E_INVALIDARG, L"The only namespace is MAPI.");
  }
  if (nameSpace_ == nullptr) nameSpace_ = NameSpaceObject::Create();
  nameSpace_->AddRef();
  return call.ReturnObject(nameSpace_);
}

}  // namespace t4standin
