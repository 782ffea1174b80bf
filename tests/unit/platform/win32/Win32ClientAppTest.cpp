// Outlook's Application object behind Win32ClientApp: Version late bound and
// the Quit event through a hand-written connection point.
#include "platform/win32/Win32ClientApp.h"

#include <gtest/gtest.h>
#include <ocidl.h>
#include <olectl.h>

#include <map>
#include <memory>

#include "platform/win32/FakeDispatch.h"
#include "support/Error.h"

namespace t4 {
namespace {

using test::FakeCall;
using win32::Win32ClientApp;

const IID kApplicationEvents = {
    0x0006304E, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID kApplicationEvents11 = {
    0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
// An event interface of some other version, only reachable by enumeration.
const IID kOtherEvents = {
    0x12345678, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

constexpr DISPID kQuit = 61447;

// One connection point firing dispinterface `iid`. Advise insists on a sink
// that answers QueryInterface for `iid`, as Outlook's does.
class FakePoint : public test::FakeUnknown<IConnectionPoint, &IID_IConnectionPoint> {
 public:
  explicit FakePoint(const IID& iid) : iid_(iid) {}

  // Fires event `id` to every sink, the way a source does: from a snapshot
  // of its sinks, without references of its own, so the sink has to look
  // after itself when its handler unadvises.
  void Fire(DISPID id) {
    std::vector<IDispatch*> snapshot;
    for (auto& [cookie, sink] : sinks_) snapshot.push_back(sink);
    for (IDispatch* sink : snapshot) {
      DISPPARAMS none = {};
      VARIANT result;
      ::VariantInit(&result);
      EXPECT_EQ(sink->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr),
                S_OK);
      ::VariantClear(&result);
    }
  }
  size_t Sinks() const { return sinks_.size(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    *iid = iid_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    IDispatch* events = nullptr;
    if (FAILED(sink->QueryInterface(iid_, reinterpret_cast<void**>(&events)))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = ++lastCookie_;
    sinks_[*cookie] = events;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    auto it = sinks_.find(cookie);
    if (it == sinks_.end()) return CONNECT_E_NOCONNECTION;
    IDispatch* sink = it->second;
    sinks_.erase(it);
    sink->Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  ~FakePoint() override = default;

  IID iid_;
  std::map<DWORD, IDispatch*> sinks_;
  DWORD lastCookie_ = 0;
};

// Lists the points of a container, one at a time.
class FakeEnumPoints : public test::FakeUnknown<IEnumConnectionPoints, &IID_IEnumConnectionPoints> {
 public:
  explicit FakeEnumPoints(std::vector<FakePoint*> points) : points_(std::move(points)) {
    for (FakePoint* p : points_) p->AddRef();
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override {
    ULONG n = 0;
    while (n < count && next_ < points_.size()) {
      points[n] = points_[next_++];
      points[n]->AddRef();
      ++n;
    }
    if (fetched != nullptr) *fetched = n;
    return n == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    next_ += count;
    return next_ <= points_.size() ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints**) override { return E_NOTIMPL; }

 private:
  ~FakeEnumPoints() override {
    for (FakePoint* p : points_) p->Release();
  }
  std::vector<FakePoint*> points_;
  size_t next_ = 0;
};

// Outlook's Application object: a Version property and an event source
// whose points are found by identifier or listed.
class FakeApplication : public test::FakeDispatch, public IConnectionPointContainer {
 public:
  explicit FakeApplication(std::vector<FakePoint*> points) : points_(std::move(points)) {
    Text(u"Version", u"12.0.0.6423");
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (IsEqualIID(iid, IID_IConnectionPointContainer)) {
      *object = static_cast<IConnectionPointContainer*>(this);
      AddRef();
      return S_OK;
    }
    return FakeDispatch::QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return FakeDispatch::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return FakeDispatch::Release(); }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
    *points = new FakeEnumPoints(points_);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    for (FakePoint* p : points_) {
      IID offered;
      p->GetConnectionInterface(&offered);
      if (IsEqualIID(offered, iid)) {
        p->AddRef();
        *point = p;
        return S_OK;
      }
    }
    *point = nullptr;
    return CONNECT_E_NOCONNECTION;
  }

 private:
  ~FakeApplication() override {
    for (FakePoint* p : points_) p->Release();
  }
  std::vector<FakePoint*> points_;
};

class Win32ClientAppTest : public test::ComTest {
 protected:
  // An application offering exactly `iid`'s events (the point is shared
  // with the test).
  void MakeApplication(const IID& iid) {
    point = new FakePoint(iid);
    point->AddRef();
    application = new FakeApplication({point});
  }
  void TearDown() override {
    if (application != nullptr) {
      EXPECT_EQ(application->References(), 1u);
      application->Release();
    }
    if (point != nullptr) {
      EXPECT_EQ(point->Sinks(), 0u);
      EXPECT_EQ(point->References(), 1u);
      point->Release();
    }
    test::ComTest::TearDown();
  }
  FakePoint* point = nullptr;
  FakeApplication* application = nullptr;
};

TEST_F(Win32ClientAppTest, VersionIsReadLateBound) {
  MakeApplication(kApplicationEvents11);
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  EXPECT_EQ(app.Version(), u"12.0.0.6423");
  EXPECT_EQ(app.Object(), static_cast<IDispatch*>(application));
}

TEST_F(Win32ClientAppTest, QuitReachesTheCallbackThroughApplicationEvents11) {
  MakeApplication(kApplicationEvents11);
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  int quits = 0;
  app.AdviseQuit([&] { ++quits; });
  EXPECT_EQ(point->Sinks(), 1u);
  point->Fire(0xF001);  // ItemSend and the like: answered, ignored
  point->Fire(0xF006);
  EXPECT_EQ(quits, 0);
  point->Fire(kQuit);
  EXPECT_EQ(quits, 1);
  app.UnadviseQuit();
  EXPECT_EQ(point->Sinks(), 0u);
  point->Fire(kQuit);
  EXPECT_EQ(quits, 1);
  EXPECT_NO_THROW(app.UnadviseQuit());
}

TEST_F(Win32ClientAppTest, ApplicationEventsArePreferred) {
  point = new FakePoint(kApplicationEvents11);
  point->AddRef();
  auto* current = new FakePoint(kApplicationEvents);
  current->AddRef();
  application = new FakeApplication({point, current});
  {
    Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
    int quits = 0;
    app.AdviseQuit([&] { ++quits; });
    EXPECT_EQ(point->Sinks(), 0u);
    EXPECT_EQ(current->Sinks(), 1u);
    current->Fire(kQuit);
    EXPECT_EQ(quits, 1);
  }
  // The destructor ended the subscription.
  EXPECT_EQ(current->Sinks(), 0u);
  current->Release();
}

TEST_F(Win32ClientAppTest, AnyListedPointServesWhenNoKnownOneIsOffered) {
  MakeApplication(kOtherEvents);
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  int quits = 0;
  app.AdviseQuit([&] { ++quits; });
  point->Fire(kQuit);
  EXPECT_EQ(quits, 1);
}

TEST_F(Win32ClientAppTest, CallbackMayUnadviseAndReleaseTheClient) {
  MakeApplication(kApplicationEvents11);
  auto app = std::make_unique<Win32ClientApp>(win32::ComPtr<IDispatch>::CopyFrom(application));
  int quits = 0;
  app->AdviseQuit([&] {
    ++quits;
    app->UnadviseQuit();
    app.reset();
  });
  point->Fire(kQuit);
  EXPECT_EQ(quits, 1);
  EXPECT_EQ(app, nullptr);
  EXPECT_EQ(point->Sinks(), 0u);
}

TEST_F(Win32ClientAppTest, FailingCallbackDoesNotReachTheSource) {
  MakeApplication(kApplicationEvents11);
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  app.AdviseQuit([] { throw Error(5, u"handler failed"); });
  point->Fire(kQuit);  // the sink still answers S_OK
}

TEST_F(Win32ClientAppTest, AdvisingAgainReplacesTheSubscription) {
  MakeApplication(kApplicationEvents11);
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  int first = 0;
  int second = 0;
  app.AdviseQuit([&] { ++first; });
  app.AdviseQuit([&] { ++second; });
  EXPECT_EQ(point->Sinks(), 1u);
  point->Fire(kQuit);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST_F(Win32ClientAppTest, ObjectWithoutEventsRaises459) {
  auto [fake, object] = test::MakeFake();
  Win32ClientApp app(object);
  try {
    app.AdviseQuit([] {});
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 459);
    EXPECT_EQ(e.Description(), u"Object or class does not support the set of events");
  }
  EXPECT_NO_THROW(app.UnadviseQuit());
}

TEST_F(Win32ClientAppTest, ContainerWithoutPointsRaises459) {
  application = new FakeApplication({});
  Win32ClientApp app(win32::ComPtr<IDispatch>::CopyFrom(application));
  try {
    app.AdviseQuit([] {});
    FAIL() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 459);
  }
}

}  // namespace
}  // namespace t4
