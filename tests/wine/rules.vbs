' The rules component Tandrel4.CategoryRules used directly, as the library
' uses it from Outlook 2007 on: the master list object over Outlook's
' category collection and the category rules of the default store. Prints
' PASS/FAIL lines and a SUMMARY.
'
' WriteCategories and RenameCategory take their texts as by-reference
' Strings (BSTR*), for the library's own late-bound calls and typed VB
' variables. A script variable is a Variant, which a by-reference String
' parameter does not take (type mismatch), so the script passes values;
' what comes back through the references is checked by t4_conformance.
Const EXPECTED_CHECKS = 30

On Error Resume Next

Function OutlookCategory(olCats, name)
  Dim i
  Set OutlookCategory = Nothing
  For i = 1 To olCats.Count
    If olCats.Item(i).Name = name Then Set OutlookCategory = olCats.Item(i)
  Next
End Function

Dim ol, olCats, rules, reader, reader1, list, cr, value, oldName, newName, id, redId

Set ol = CreateObject("Tandrel4Test.Outlook")
Check Err.Number = 0, "the Outlook stand-in is created", Err.Description
ol.Reset
ol.Version = "12.0.4518"
Set olCats = ol.GetNamespace("MAPI").Categories
Set rules = ol.GetNamespace("MAPI").DefaultStore.GetRules()

Set reader = CreateObject("Tandrel4.CategoryRules")
Check Err.Number = 0 And IsObject(reader), "CreateObject Tandrel4.CategoryRules", Err.Description
value = TypeName(reader)
Check value = "CategoryRules" Or value = "_CategoryRulesReader", "TypeName of CategoryRules", value
Set reader1 = CreateObject("Tandrel4.CategoryRules.1")
Check Err.Number = 0 And Not (reader Is reader1), "CreateObject Tandrel4.CategoryRules.1", Err.Description

' The master list.
Set list = reader.GetMasterlist(ol)
Check Err.Number = 0 And IsObject(list), "GetMasterlist", Err.Number & " " & Err.Description
value = TypeName(list)
Check value = "MasterlistObject" Or value = "_MasterlistObject", "TypeName of the master list", value
Check list.ReadCategories = "", "an empty Outlook list reads as an empty text", list.ReadCategories
Check list.Format = "", "Format is empty: the list is no registry value", list.Format
olCats.Add "Red", 1, 2
redId = olCats.Item(1).CategoryID
Check list.ReadCategories = redId & ";Red;0;1", "a category as CategoryID;Name;Color;ShortCut with the numbers mapped", list.ReadCategories
list.WriteCategories ";Blue;3;0;" & redId & ";Red;5;11"
Check Err.Number = 0, "WriteCategories", Err.Number & " " & Err.Description
Check olCats.Count = 2, "Blue is created", olCats.Count
Check OutlookCategory(olCats, "Blue").Color = 4 And OutlookCategory(olCats, "Blue").ShortcutKey = 0, "Blue with Outlook colour 4, no shortcut", ""
Check OutlookCategory(olCats, "Red").Color = 6 And OutlookCategory(olCats, "Red").ShortcutKey = 12, "Red updated to Outlook colour 6 and Ctrl+F12", ""
id = OutlookCategory(olCats, "Blue").CategoryID
Check list.ReadCategories = redId & ";Red;5;11;" & id & ";Blue;3;0", "the list reads back in Outlook's order", list.ReadCategories
list.WriteCategories id & ";"
Check Err.Number = 0 And olCats.Count = 1 And OutlookCategory(olCats, "Blue") Is Nothing, "a group without a name removes the category", olCats.Count

' The rules.
rules.AddTestRule "Colours", "Red;Green", "Red"
rules.AddTestRule "Other", "Green", ""
Set cr = reader.GetCategoryRules(ol)
Check Err.Number = 0 And IsObject(cr), "GetCategoryRules", Err.Number & " " & Err.Description
value = TypeName(cr)
Check value = "CategoryRulesObject" Or value = "_CategoryRulesObject", "TypeName of the rules", value
Check cr.Changed = False, "the rules are unchanged at first", cr.Changed
oldName = "red"
newName = "Crimson"
cr.RenameCategory (oldName), (newName)
Check Err.Number = 0, "RenameCategory", Err.Number & " " & Err.Description
Check rules.RuleText(1) = "Crimson;Green|Crimson", "the rule naming Red (any case) is renamed", rules.RuleText(1)
Check rules.RuleText(2) = "Green|", "a rule without the name is untouched", rules.RuleText(2)
Check cr.Changed = True, "Changed after a rename", cr.Changed
Check rules.SaveCount = 0, "nothing saved before Save", rules.SaveCount
cr.Save
Check Err.Number = 0 And rules.SaveCount = 1, "Save writes the rules once", rules.SaveCount
Check cr.Changed = False, "Changed is cleared by Save", cr.Changed

' What is passed for Outlook: an object only.
Err.Clear
Set list = reader.GetMasterlist("Outlook")
Check Err.Number = 13, "GetMasterlist with a text raises 13 (type mismatch)", Err.Number & " " & Err.Description
Err.Clear
Set cr = reader.GetCategoryRules(12)
Check Err.Number = 13, "GetCategoryRules with a number raises 13", Err.Number & " " & Err.Description
Err.Clear
Set cr = reader.GetCategoryRules(Nothing)
Check Err.Number = 91, "GetCategoryRules with Nothing raises 91", Err.Number & " " & Err.Description
Err.Clear
Set list = reader.GetMasterlist(Empty)
Check Err.Number = 13, "GetMasterlist with Empty raises 13", Err.Number & " " & Err.Description

Err.Clear
Set list = Nothing
Set cr = Nothing
Set reader = Nothing
Set reader1 = Nothing
Check Err.Number = 0, "objects released", Err.Description
ol.Reset

Finish EXPECTED_CHECKS
