#pragma once

#include "platform/win32/Dispatcher.h"
#include "support/IMapiUtils.h"

namespace t4::win32 {

// The utilities object of the MAPI library ("dimdo.sfUtils"), late bound:
// GetIDsFromNames(MAPIProp, GUID, ID, bCreate), HrArrToString(Value),
// HrGetOneProp(MAPIProp, PropTag), HrLocalToGMT(Value). Raw objects go out as they came from
// the library; binary data as a Byte array.
class DispatchMapiUtils : public IMapiUtils {
 public:
  explicit DispatchMapiUtils(ComPtr<IDispatch> utils) : utils_(std::move(utils)) {}

  int32_t GetIDsFromNames(IMapiProp& object, const std::u16string& guid, const std::u16string& name,
                          bool create) override;
  std::u16string HrArrToString(const std::string& bytes) override;
  MapiValue HrGetOneProp(IMapiProp& object, uint32_t propTag) override;
  double HrLocalToGMT(double localDate) override;

 private:
  Dispatcher utils_;
};

}  // namespace t4::win32
