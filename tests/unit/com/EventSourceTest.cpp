// The connection point container every class with events uses: its one
// connection point, the events raised through it, and the object kept
// alive while a sink runs.
#include "com/EventSource.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "Automation.h"
#include "ProbeObject.h"
#include "com/ComModule.h"
#include "com/Tandrel4_h.h"
#include "platform/win32/ComPtr.h"

namespace t4 {
namespace {

using win32::ComPtr;
using EventProbe = test::ProbeObject<com::EventSource<DIID___Categories>>;

// One event a sink heard: its dispatch id and how many arguments it had.
using Heard = std::pair<DISPID, UINT>;

// An event sink on the stack (its references counted in `refs`): keeps
// what it hears and runs `onEvent` inside each event.
class Sink final : public t4test::StackDispatch {
 public:
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    heard.emplace_back(id, params->cArgs);
    if (onEvent) onEvent();
    return S_OK;
  }

  std::vector<Heard> heard;
  std::function<void()> onEvent;
};

// A new probe (one reference, which the ComPtr owns) and its C++ face.
struct Probe {
  EventProbe* object = new EventProbe();
  ComPtr<IConnectionPointContainer> container = ComPtr<IConnectionPointContainer>::Attach(object);
};

ComPtr<IConnectionPoint> PointOf(const ComPtr<IConnectionPointContainer>& container) {
  ComPtr<IConnectionPoint> point;
  container->FindConnectionPoint(DIID___Categories, point.Put());
  return point;
}

TEST(EventSource, FindConnectionPointKnowsOnlyItsSource) {
  const Probe probe;
  const struct {
    const char* name;
    const IID* iid;
    HRESULT hr;
  } cases[] = {
      {"its source", &DIID___Categories, S_OK},
      {"another source", &DIID___Application, CONNECT_E_NOCONNECTION},
      {"no source at all", &IID_IDispatch, CONNECT_E_NOCONNECTION},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ComPtr<IConnectionPoint> point;
    EXPECT_EQ(probe.container->FindConnectionPoint(*c.iid, point.Put()), c.hr);
    EXPECT_EQ(static_cast<bool>(point), c.hr == S_OK);
  }
  EXPECT_EQ(probe.container->FindConnectionPoint(DIID___Categories, nullptr), E_POINTER);
  IID iid = GUID_NULL;
  PointOf(probe.container)->GetConnectionInterface(&iid);
  EXPECT_TRUE(IsEqualIID(iid, DIID___Categories));
}

TEST(EventSource, EnumConnectionPointsListsTheOnePoint) {
  const Probe probe;
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(probe.container->EnumConnectionPoints(points.Put()), S_OK);
  IConnectionPoint* listed[2] = {};
  ULONG fetched = 0;
  EXPECT_EQ(points->Next(2, listed, &fetched), S_FALSE);
  ASSERT_EQ(fetched, 1u);
  EXPECT_EQ(listed[0], PointOf(probe.container).Get());
  listed[0]->Release();
}

TEST(EventSource, TheConnectionPointSharesTheObjectsReferences) {
  const long before = com::ComModule::ObjectCount();
  Probe probe;
  ComPtr<IConnectionPoint> point = PointOf(probe.container);
  ComPtr<IConnectionPointContainer> back;
  point->GetConnectionPointContainer(back.Put());
  EXPECT_EQ(back.Get(), probe.container.Get());
  back.Reset();
  probe.container.Reset();
  EXPECT_EQ(com::ComModule::ObjectCount(), before + 1);  // the point holds it
  point.Reset();
  EXPECT_EQ(com::ComModule::ObjectCount(), before);
}

TEST(EventSource, RaiseEventReachesTheAdvisedSinks) {
  const Probe probe;
  const auto point = PointOf(probe.container);
  Sink first;
  Sink second;
  DWORD firstCookie = 0;
  DWORD secondCookie = 0;
  EXPECT_FALSE(probe.object->HasSinks());
  ASSERT_EQ(point->Advise(&first, &firstCookie), S_OK);
  ASSERT_EQ(point->Advise(&second, &secondCookie), S_OK);
  EXPECT_TRUE(probe.object->HasSinks());
  VARIANT arg;
  V_VT(&arg) = VT_I4;
  V_I4(&arg) = 3;
  DISPPARAMS params = {&arg, nullptr, 1, 0};
  probe.object->RaiseEvent(4, &params);
  EXPECT_EQ(first.heard, std::vector<Heard>{Heard(4, 1)});
  EXPECT_EQ(second.heard, std::vector<Heard>{Heard(4, 1)});
  point->Unadvise(firstCookie);
  probe.object->RaiseEvent(5, &params);
  EXPECT_EQ(first.heard.size(), 1u);
  EXPECT_EQ(second.heard, (std::vector<Heard>{Heard(4, 1), Heard(5, 1)}));
  point->Unadvise(secondCookie);
  EXPECT_FALSE(probe.object->HasSinks());
  EXPECT_EQ(first.refs, 1u);
  EXPECT_EQ(second.refs, 1u);
}

TEST(EventSource, TheObjectOutlivesASinkThatDropsTheLastReference) {
  const long before = com::ComModule::ObjectCount();
  Probe probe;
  EventProbe* object = probe.object;
  Sink sink;
  DWORD cookie = 0;
  PointOf(probe.container)->Advise(&sink, &cookie);
  bool aliveInside = false;
  sink.onEvent = [&] {
    probe.container.Reset();  // the host's last reference
    aliveInside = com::ComModule::ObjectCount() == before + 1;
  };
  DISPPARAMS none = {nullptr, nullptr, 0, 0};
  object->RaiseEvent(1, &none);
  EXPECT_TRUE(aliveInside);
  EXPECT_EQ(com::ComModule::ObjectCount(), before);
  EXPECT_EQ(sink.refs, 1u);  // the dying object let go of its sink
}

TEST(EventSource, ReportsNoErrorsThroughIErrorInfo) {
  const Probe probe;
  ComPtr<ISupportErrorInfo> support;
  probe.container->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.Put()));
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer), S_FALSE);
}

}  // namespace
}  // namespace t4
