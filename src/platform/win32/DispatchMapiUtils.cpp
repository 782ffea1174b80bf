#include "platform/win32/DispatchMapiUtils.h"

#include "platform/win32/DispatchMapiProp.h"
#include "platform/win32/MapiValueReader.h"

namespace t4::win32 {

int32_t DispatchMapiUtils::GetIDsFromNames(IMapiProp& object, const std::u16string& guid,
                                           const std::u16string& name, bool create) {
  Variant args[] = {DispatchMapiProp::ValueOf(object), Variant::Text(guid), Variant::Text(name),
                    Variant::Bool(create)};
  return utils_.Get(u"GetIDsFromNames", args).ToLong();
}

std::u16string DispatchMapiUtils::HrArrToString(const std::string& bytes) {
  Variant args[] = {Variant::Bytes(bytes)};
  return utils_.Get(u"HrArrToString", args).ToText();
}

MapiValue DispatchMapiUtils::HrGetOneProp(IMapiProp& object, uint32_t propTag) {
  Variant args[] = {DispatchMapiProp::ValueOf(object),
                    Variant::Long(static_cast<int32_t>(propTag))};
  const Variant value = utils_.Get(u"HrGetOneProp", args);
  return MapiValueReader::Read(value.Raw(), propTag);
}

double DispatchMapiUtils::HrLocalToGMT(double localDate) {
  Variant args[] = {Variant::Date(localDate)};
  return utils_.Get(u"HrLocalToGMT", args).ToDate();
}

}  // namespace t4::win32
