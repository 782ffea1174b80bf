#pragma once

#include <oaidl.h>
#include <windows.h>

#include <initializer_list>

#include "com/Tandrel4_h.h"

namespace t4test {

// The public object model as hosts program against it: every dual
// interface with its members in vtable slot order (a property's get and
// put are two slots). The type library must describe exactly this.
struct Member {
  const wchar_t* name;
  INVOKEKIND kind;
};

struct InterfaceModel {
  const char* name;       // interface name
  const char* className;  // class named in "Not implemented yet: <class>.<member>"
  const IID* iid;
  std::initializer_list<Member> members;
};

constexpr INVOKEKIND kCall = INVOKE_FUNC;
constexpr INVOKEKIND kGet = INVOKE_PROPERTYGET;
constexpr INVOKEKIND kPut = INVOKE_PROPERTYPUT;

inline const InterfaceModel kInterfaces[] = {
    {"_Application",
     "Application",
     &IID__Application,
     {{L"ToILanguage", kCall},
      {L"BatchMode", kGet},
      {L"BatchMode", kPut},
      {L"Categories", kGet},
      {L"Changed", kGet},
      {L"Initialize", kCall},
      {L"OutlookItems", kGet},
      {L"ReadItems", kCall},
      {L"ReadMasterlist", kCall},
      {L"Redo", kCall},
      {L"RedoIsPossible", kGet},
      {L"RulesSupported", kGet},
      {L"SaveChanges", kCall},
      {L"Terminate", kCall},
      {L"Undo", kCall},
      {L"UndoIsPossible", kGet}}},
    {"_Categories",
     "Categories",
     &IID__Categories,
     {{L"Add", kCall},
      {L"Changed", kGet},
      {L"Count", kGet},
      {L"CountDetails", kCall},
      {L"CountFilteredMember", kGet},
      {L"CountWithoutDefault", kGet},
      {L"DefaultCategory", kGet},
      {L"Delete", kCall},
      {L"ExportMasterlist", kCall},
      {L"ImportMasterlist", kCall},
      {L"Item", kGet},
      {L"FilterCategories", kGet},
      {L"FilterMasterlist", kGet},
      {L"FilterMember", kGet},
      {L"FilterTypes", kGet},
      {L"FireItemEvents", kGet},
      {L"FireItemEvents", kPut},
      {L"FireMemberEvents", kGet},
      {L"FireMemberEvents", kPut},
      {L"NameExist", kCall},
      {L"NewEnum", kGet},
      {L"SetFilter", kCall}}},
    {"_Category",
     "Category",
     &IID__Category,
     {{L"CategoryID", kGet},
      {L"Changed", kGet},
      {L"Color", kGet},
      {L"Color", kPut},
      {L"ID", kGet},
      {L"InMasterlist", kPut},
      {L"InMasterlist", kGet},
      {L"Member", kGet},
      {L"MemberCount", kGet},
      {L"Name", kGet},
      {L"Name", kPut},
      {L"NewEnum", kGet},
      {L"ShortCut", kGet},
      {L"ShortCut", kPut}}},
    {"_OutlookItems",
     "OutlookItems",
     &IID__OutlookItems,
     {{L"Changed", kGet}, {L"Count", kGet}, {L"Item", kGet}, {L"NewEnum", kGet}}},
    {"_OutlookItem",
     "OutlookItem",
     &IID__OutlookItem,
     {{L"CategoriesAdd", kCall},
      {L"CategoriesArray", kCall},
      {L"CategoriesCount", kGet},
      {L"CategoriesRemove", kCall},
      {L"CategoriesString", kCall},
      {L"Changed", kGet},
      {L"DateTime", kGet},
      {L"Folder", kGet},
      {L"GetOutlookItem", kCall},
      {L"ID", kGet},
      {L"ItemType", kGet},
      {L"MessageClass", kGet},
      {L"MoveToCategory", kCall},
      {L"Subject", kGet}}},
    {"_FolderData",
     "FolderData",
     &IID__FolderData,
     {{L"ToILanguage", kCall},
      {L"EntryID", kGet},
      {L"HasChilds", kGet},
      {L"Init", kCall},
      {L"ItemsCount", kGet},
      {L"Name", kGet},
      {L"StoreID", kGet}}},
    {"_IChild", "", &IID__IChild, {{L"Init", kCall}, {L"Key", kGet}, {L"ResetParentPtr", kCall}}},
    {"_ILanguage",
     "",
     &IID__ILanguage,
     {{L"LanguageID", kGet}, {L"LanguageID", kPut}, {L"SupportedLanguages", kGet}}},
    {"_CategoryRulesReader",
     "CategoryRules",
     &IID__CategoryRulesReader,
     {{L"GetCategoryRules", kCall}, {L"GetMasterlist", kCall}}},
    {"_MasterlistObject",
     "MasterlistObject",
     &IID__MasterlistObject,
     {{L"ReadCategories", kCall}, {L"WriteCategories", kCall}, {L"Format", kCall}}},
    {"_CategoryRulesObject",
     "CategoryRulesObject",
     &IID__CategoryRulesObject,
     {{L"Changed", kGet}, {L"Save", kCall}, {L"RenameCategory", kCall}}},
};

}  // namespace t4test
