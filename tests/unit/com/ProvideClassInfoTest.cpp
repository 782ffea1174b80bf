// IProvideClassInfo and IProvideClassInfo2 as every class of the library
// answers them: the coclass from the embedded type library and the default
// source interface.
#include "com/ProvideClassInfo.h"

#include <gtest/gtest.h>

#include <functional>

#include "ProbeObject.h"
#include "com/ProvideClassInfo2.h"
#include "com/Tandrel4_h.h"
#include "platform/win32/ComPtr.h"

namespace t4 {
namespace {

using win32::ComPtr;
using ClassInfoProbe = test::ProbeObject<com::ProvideClassInfo<CLSID_Category>>;
using EventClassProbe =
    test::ProbeObject<com::ProvideClassInfo2<CLSID_Application, &DIID___Application>>;
using QuietClassProbe = test::ProbeObject<com::ProvideClassInfo2<CLSID_FolderData>>;

// A new probe seen as IUnknown (one reference, which the ComPtr owns).
template <class Probe>
ComPtr<IUnknown> Make() {
  return ComPtr<IUnknown>::Attach(static_cast<com::DispatchImpl<_ILanguage>*>(new Probe()));
}

template <class I>
ComPtr<I> Query(const ComPtr<IUnknown>& object, REFIID iid) {
  ComPtr<I> result;
  object->QueryInterface(iid, reinterpret_cast<void**>(result.Put()));
  return result;
}

TEST(ProvideClassInfo, GetClassInfoDescribesTheCoclass) {
  const struct {
    const char* name;
    std::function<ComPtr<IUnknown>()> make;
    const CLSID* clsid;
  } cases[] = {
      {"ProvideClassInfo", Make<ClassInfoProbe>, &CLSID_Category},
      {"ProvideClassInfo2 with a source", Make<EventClassProbe>, &CLSID_Application},
      {"ProvideClassInfo2 without one", Make<QuietClassProbe>, &CLSID_FolderData},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto info = Query<IProvideClassInfo>(c.make(), IID_IProvideClassInfo);
    ASSERT_TRUE(info);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(info->GetClassInfo(type.Put()), S_OK);
    TYPEATTR* attr = nullptr;
    ASSERT_EQ(type->GetTypeAttr(&attr), S_OK);
    EXPECT_EQ(attr->typekind, TKIND_COCLASS);
    EXPECT_TRUE(IsEqualCLSID(attr->guid, *c.clsid));
    type->ReleaseTypeAttr(attr);
    EXPECT_EQ(info->GetClassInfo(nullptr), E_POINTER);
  }
}

TEST(ProvideClassInfo, AnswersIProvideClassInfoAlone) {
  const auto object = Make<ClassInfoProbe>();
  EXPECT_TRUE(Query<IProvideClassInfo>(object, IID_IProvideClassInfo));
  EXPECT_FALSE(Query<IProvideClassInfo2>(object, IID_IProvideClassInfo2));
  const auto support = Query<ISupportErrorInfo>(object, IID_ISupportErrorInfo);
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IProvideClassInfo), S_FALSE);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__ILanguage), S_OK);
}

TEST(ProvideClassInfo2, GetGuidNamesTheDefaultSourceInterface) {
  const struct {
    const char* name;
    std::function<ComPtr<IUnknown>()> make;
    DWORD kind;
    HRESULT hr;
    const GUID* guid;
  } cases[] = {
      {"a class with events", Make<EventClassProbe>, GUIDKIND_DEFAULT_SOURCE_DISP_IID, S_OK,
       &DIID___Application},
      {"a class without events", Make<QuietClassProbe>, GUIDKIND_DEFAULT_SOURCE_DISP_IID,
       E_INVALIDARG, &GUID_NULL},
      {"another kind", Make<EventClassProbe>, GUIDKIND_DEFAULT_SOURCE_DISP_IID + 1, E_INVALIDARG,
       &GUID_NULL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const auto info = Query<IProvideClassInfo2>(c.make(), IID_IProvideClassInfo2);
    ASSERT_TRUE(info);
    GUID guid = IID_IUnknown;
    EXPECT_EQ(info->GetGUID(c.kind, &guid), c.hr);
    EXPECT_TRUE(IsEqualGUID(guid, *c.guid));
    EXPECT_EQ(info->GetGUID(c.kind, nullptr), E_POINTER);
  }
}

TEST(ProvideClassInfo2, AnswersIProvideClassInfoTooAndReportsNoErrors) {
  const auto object = Make<EventClassProbe>();
  const auto second = Query<IProvideClassInfo2>(object, IID_IProvideClassInfo2);
  const auto first = Query<IProvideClassInfo>(object, IID_IProvideClassInfo);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(static_cast<IProvideClassInfo*>(second.Get()), first.Get());
  const auto support = Query<ISupportErrorInfo>(object, IID_ISupportErrorInfo);
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IProvideClassInfo2), S_FALSE);
}

}  // namespace
}  // namespace t4
