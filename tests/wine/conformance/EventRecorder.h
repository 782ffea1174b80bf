#pragma once

#include <ocidl.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "Automation.h"

namespace t4test {

// A sink for the __Categories events, as a script engine builds one: plain
// IDispatch, called by dispatch id. It writes each event as a short text
// ("ItemAdd Work", "ItemRemove 3", "MemberAdd Travel 2"), reading the
// objects it receives through IDispatch, and keeps the category of the last
// event (AddRef'ed) so that a test can compare identities. `react` runs
// inside the event, to call back into the model.
class EventRecorder final : public StackDispatch {
 public:
  EventRecorder() = default;
  ~EventRecorder() { ForgetLast(); }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    // Arguments arrive last first.
    auto arg = [&](UINT i) -> const VARIANT& { return params->rgvarg[params->cArgs - 1 - i]; };
    static const wchar_t* const kNames[] = {L"?",          L"ItemAdd",   L"ItemChange",
                                            L"ItemRemove", L"MemberAdd", L"MemberRemove"};
    std::wstring text = (id >= 1 && id <= 5) ? kNames[id] : L"?";
    IDispatch* category = nullptr;
    if (id == 3 && params->cArgs == 1 && V_VT(&arg(0)) == VT_BSTR) {
      text += L" ";
      text += V_BSTR(&arg(0));
    } else if (params->cArgs >= 1 && V_VT(&arg(0)) == VT_DISPATCH) {
      category = V_DISPATCH(&arg(0));
      text += L" " + Call(category, L"Name").value.Text();
      if (params->cArgs == 2 && V_VT(&arg(1)) == VT_DISPATCH) {
        text += L" " + std::to_wstring(Call(V_DISPATCH(&arg(1)), L"ID").value.Long());
      }
    }
    events.push_back(text);
    if (category != nullptr) {
      ForgetLast();
      last = category;
      last->AddRef();
    }
    if (react) react(id, category);
    return S_OK;
  }

  void ForgetLast() {
    if (last != nullptr) last->Release();
    last = nullptr;
  }

  std::vector<std::wstring> events;
  IDispatch* last = nullptr;
  std::function<void(DISPID, IDispatch*)> react;
};

}  // namespace t4test
