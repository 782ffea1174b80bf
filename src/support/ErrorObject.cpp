#include "support/ErrorObject.h"

#include <exception>
#include <new>

#include "support/Language.h"
#include "support/Ports.h"
#include "support/RunTimeError.h"
#include "support/Utf.h"

namespace t4 {

namespace {

constexpr char16_t kLibrary[] = u"Tandrel4";

void ReplaceAll(std::u16string& text, std::u16string_view from, std::u16string_view to) {
  if (from.empty()) return;
  size_t pos = 0;
  while ((pos = text.find(from, pos)) != std::u16string::npos) {
    text.replace(pos, from.size(), to);
    pos += to.size();
  }
}

}  // namespace

bool ErrorObject::Capture(std::u16string_view label) {
  std::exception_ptr current = std::current_exception();
  if (!current) {
    Clear();
    source_ = u"; " + std::u16string(label);
    return true;
  }
  try {
    std::rethrow_exception(current);
  } catch (const Error& e) {
    return Capture(e, label);
  } catch (const std::bad_alloc&) {
    return Capture(RunTimeError::Make(RunTimeError::kOutOfMemory), label);
  } catch (const std::exception& e) {
    Error internal(RunTimeError::kInternalError, RunTimeError::Text(RunTimeError::kInternalError) +
                                                     u" (" + Utf::FromUtf8(e.what()) + u")");
    return Capture(internal, label);
  } catch (...) {
    return Capture(RunTimeError::Make(RunTimeError::kInternalError), label);
  }
}

bool ErrorObject::Capture(const Error& current, std::u16string_view label) {
  number_ = current.Number();
  description_ = current.Description();
  helpContext_ = current.HelpContext();
  helpFile_ = current.HelpFile();
  lastDllError_ = current.LastDllError();
  source_ = current.Source() + u"; " + std::u16string(label);
  return true;
}

void ErrorObject::Raise() const {
  const int32_t number = number_ == 0 ? static_cast<int32_t>(0x800A0000u) : number_;
  throw Error(number, description_, source_, helpFile_, helpContext_);
}

void ErrorObject::Clear() {
  number_ = 0;
  helpContext_ = 0;
  lastDllError_ = 0;
  source_.clear();
  description_.clear();
  helpFile_.clear();
}

std::u16string ErrorObject::GetMessage(int32_t number, const std::vector<std::u16string>* args) {
  int32_t id = 0;
  if (__builtin_sub_overflow(number, kMessageBase, &id)) {
    throw RunTimeError::Make(RunTimeError::kOverflow);
  }
  std::u16string text;
  try {
    text = Language::LoadText(id);
  } catch (const Error&) {
    text.clear();
  }
  if (text.find(u'#') != std::u16string::npos && args != nullptr) {
    for (size_t i = 0; i < args->size(); ++i) {
      std::u16string placeholder(1, u'#');
      placeholder += Utf::Decimal(static_cast<int64_t>(i));
      ReplaceAll(text, placeholder, (*args)[i]);
    }
  }
  ReplaceAll(text, u"|", u"\r\n");
  return text;
}

std::u16string ErrorObject::GetLogEntry() const {
  std::u16string entry = Ports::Shell().NowShortDateTime() + u"\r\n";
  entry += u"  App: " + std::u16string(kLibrary) + u"\r\n";
  entry += u"  Msg: " + description_ + u"\r\n";
  entry += u"  No : " + Utf::Decimal(number_) + u"\r\n";
  entry += u"  Src: " + source_ + u"\r\n";
  entry += u"\r\n";
  return entry;
}

std::u16string ErrorObject::GetErrSource(std::u16string_view cls, std::u16string_view proc,
                                         int line) {
  std::u16string label(kLibrary);
  label += u'.';
  label += cls;
  label += u'.';
  label += proc;
  label += u" (";
  label += Utf::Decimal(line);
  label += u')';
  return label;
}

void ErrorObject::RaiseCode(int32_t code, const std::vector<std::u16string>& args) {
  throw Error(code, GetMessage(code, &args));
}

}  // namespace t4
