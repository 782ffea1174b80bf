#include "exchange/CatsExternReg.h"

#include "exchange/CatsExternBase.h"
#include "masterlist/IMasterlist.h"
#include "masterlist/Masterlist03.h"
#include "support/ErrorFrame.h"
#include "support/ErrorObject.h"
#include "support/HandleTable.h"
#include "support/RunTimeError.h"
#include "support/TextCase.h"

namespace t4 {

namespace {

constexpr char16_t kClass[] = u"CatsExternReg";

}  // namespace

void CatsExternReg::Init(int32_t parentHandle, const std::u16string&) {
  auto parent = RunTimeError::Require(HandleTable::Resolve<CatsExternBase>(parentHandle));
  store_ = parent->MasterlistStore();
}

std::u16string CatsExternReg::GetValuePrefix(bool withType) const {
  const IMasterlist& store = *RunTimeError::Require(store_.get());
  std::u16string prefix = u"\"" + store.Setting() + u"\"=";
  if (withType && !store.Format().empty()) prefix += store.Format() + u":";
  return prefix;
}

void CatsExternReg::Export(std::u16string& text, Categories& categories) {
  Frame(kClass, u"ICatsExtern_Export", [&] {
    text.clear();
    const std::u16string list = CatsExternBase::TripleList(categories);
    if (list.empty()) return;
    IMasterlist& store = *RunTimeError::Require(store_.get());
    const std::u16string data = store.Convert(list);
    text = u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\" + store.Section() +
           u"]\r\n" + GetValuePrefix(true) + data;
  });
}

void CatsExternReg::Import(std::u16string& text) {
  Frame(kClass, u"ICatsExtern_Import", [&] {
    const std::u16string prefix = GetValuePrefix(false);
    const size_t p = TextCase::Lower(text).find(TextCase::Lower(prefix));
    if (p == std::u16string::npos) ErrorObject::RaiseCode(cmFileTypeNotSupported);
    size_t s = p + prefix.size();
    const bool binary = TextCase::Lower(text.substr(s, 3)) == u"hex";
    if (binary) {
      // The three letters and the character behind them (":").
      s = std::min(s + 4, text.size());
      const size_t e = text.find(u"00\r\n", s);
      std::u16string data = e == std::u16string::npos ? text.substr(s) : text.substr(s, e + 2 - s);
      data = CatsExternBase::ReplaceAll(data, u"\\", u"");
      data = CatsExternBase::ReplaceAll(data, u"\r\n  ", u"");
      data = CatsExternBase::ReplaceAll(data, u"\r\n", u"");
      text = Masterlist03::ConvertFromHex(data);
      return;
    }
    // The opening quote.
    s = std::min(s + 1, text.size());
    const size_t e = text.find(u'"', s);
    // Without a closing quote the data ends one character before the text.
    const std::u16string data = e != std::u16string::npos
                                    ? text.substr(s, e - s)
                                    : text.substr(s, text.size() > s ? text.size() - s - 1 : 0);
    text = CatsExternBase::ReplaceAll(data, u",", u";");
  });
}

}  // namespace t4
