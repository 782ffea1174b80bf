#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "exchange/ICatsExtern.h"
#include "support/IMapiUtils.h"
#include "support/IXmlDocument.h"

namespace t4 {

// The "xml" format, in the vocabulary of Outlook 2007's category list: a
// root `categories` (default="Red Category", lastSavedTime, xmlns="") with
// one `category` (xmlns="", name, color, keyboardShortcut) per category,
// attributes in that order, as the DOM serialises it. Names pass through
// the ";"-separated triple list on export, so a name with ";" becomes two
// elements. The import takes the first top-level element whose local name
// is exactly "categories" and reads name, color and keyboardShortcut of
// every child node (a child that is no element fails); a text that does not
// parse imports nothing, without an error.
class CatsExternXml : public ICatsExtern {
 public:
  // Creates the MAPI utilities object ("sfUtils") the time stamp needs.
  CatsExternXml();

  void Export(std::u16string& text, Categories& categories) override;
  void Import(std::u16string& text) override;

  // The export time stamp: the local time turned into universal time by
  // the MAPI utilities ("yyyy-mm-ddThh:nn:ss"), then "." and the
  // milliseconds of the seconds-since-midnight timer, three digits.
  std::u16string GetTimeStamp();
  // An OLE date as "yyyy-mm-ddThh:nn:ss", rounded to the second.
  static std::u16string FormatDate(double oleDate);

 private:
  void CreateDomObject();
  std::shared_ptr<IXmlNode> CreateCategoryElement(const std::u16string& name, int32_t color,
                                                  int32_t shortCut);
  void FindCategoriesNode();
  std::u16string ReadCategoryElements();

  std::shared_ptr<IMapiUtils> utils_;
  std::shared_ptr<IXmlDocument> document_;
  std::shared_ptr<IXmlNode> listElement_;
  std::vector<std::shared_ptr<IXmlNode>> listChildren_;
};

}  // namespace t4
