#include "support/RunTimeError.h"

namespace t4 {

namespace {

struct Row {
  int32_t number;
  const char16_t* text;
};

constexpr Row kTexts[] = {
    {5, u"Invalid procedure call or argument"},
    {6, u"Overflow"},
    {7, u"Out of memory"},
    {9, u"Subscript out of range"},
    {11, u"Division by zero"},
    {13, u"Type mismatch"},
    {51, u"Internal error"},
    {52, u"Bad file name or number"},
    {53, u"File not found"},
    {54, u"Bad file mode"},
    {55, u"File already open"},
    {57, u"Device I/O error"},
    {58, u"File already exists"},
    {61, u"Disk full"},
    {62, u"Input past end of file"},
    {70, u"Permission denied"},
    {75, u"Path/File access error"},
    {76, u"Path not found"},
    {321, u"Invalid file format"},
    {91, u"Object variable or With block variable not set"},
    {94, u"Invalid use of Null"},
    {326, u"Resource with identifier not found"},
    {424, u"Object required"},
    {429, u"ActiveX component can't create object"},
    {438, u"Object doesn't support this property or method"},
    {440, u"Automation error"},
    {449, u"Argument not optional"},
    {450, u"Wrong number of arguments or invalid property assignment"},
    {457, u"This key is already associated with an element of this collection"},
    {459, u"Object or class does not support the set of events"},
};

}  // namespace

std::u16string RunTimeError::Text(int32_t number) {
  for (const Row& row : kTexts) {
    if (row.number == number) return row.text;
  }
  return u"Application-defined or object-defined error";
}

Error RunTimeError::Make(int32_t number) {
  return Error(number, Text(number));
}

Error RunTimeError::NotImplemented(std::u16string_view member) {
  return Error(kNotImplemented, u"Not implemented yet: " + std::u16string(member));
}

}  // namespace t4
