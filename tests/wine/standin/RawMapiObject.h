#pragma once

#include <unknwn.h>
#include <windows.h>

#include <memory>

#include "Mailbox.h"

namespace t4standin {

// A raw MAPI object as MAPIOBJECT and RawTable hand it out: IUnknown only,
// like the MAPI interfaces behind them, which have no IDispatch. The other
// objects of the stand-in find out what it stands for through Of.
class RawMapiObject final : public IUnknown {
 public:
  enum class Kind { kFolder, kStore, kContentsTable };

  // One reference, which the caller owns.
  static RawMapiObject* Create(Kind kind, std::shared_ptr<MailStore> store,
                               std::shared_ptr<MailFolder> folder);
  // The raw object behind `unknown` (no reference), or null for any other
  // object.
  static RawMapiObject* Of(IUnknown* unknown) noexcept;
  // The same, for an argument: VT_UNKNOWN or VT_DISPATCH.
  static RawMapiObject* Of(const VARIANT* value) noexcept;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;

  Kind kind() const noexcept { return kind_; }
  const std::shared_ptr<MailStore>& store() const noexcept { return store_; }
  const std::shared_ptr<MailFolder>& folder() const noexcept { return folder_; }

 private:
  RawMapiObject(Kind kind, std::shared_ptr<MailStore> store, std::shared_ptr<MailFolder> folder);
  ~RawMapiObject();

  Kind kind_;
  std::shared_ptr<MailStore> store_;
  std::shared_ptr<MailFolder> folder_;
  volatile LONG refs_ = 1;
};

}  // namespace t4standin
