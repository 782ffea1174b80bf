' Tandrel4 bound to Outlook 2007 (the stand-in reporting "12.0.4518"): the
' master list is Outlook's own category collection, reached through the
' rules component (CategoryRules), with Outlook's colour and shortcut
' numbers mapped, and a renamed category is renamed in the rules of the
' default store too. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 43

On Error Resume Next

' The stand-in's category of that name, or Nothing.
Function OutlookCategory(olCats, name)
  Dim i
  Set OutlookCategory = Nothing
  For i = 1 To olCats.Count
    If olCats.Item(i).Name = name Then Set OutlookCategory = olCats.Item(i)
  Next
End Function

Dim ol, ns, olCats, rules, app, cats, cat, work, home, olCat, value

Set ol = CreateObject("Tandrel4Test.Outlook")
Check Err.Number = 0, "the Outlook stand-in is created", Err.Description
ol.Reset
ol.Version = "12.0.4518"
Set ns = ol.GetNamespace("MAPI")
Set olCats = ns.Categories
Set rules = ns.DefaultStore.GetRules()
' Outlook counts colours from 1 (red) with 0 for none, and Ctrl+F2 as 2.
olCats.Add "Work", 5, 4
olCats.Add "Home", 0, 0
olCats.Add "Travel", 25, 12
rules.AddTestRule "Sort work", "Work", "Work;Home"
Check Err.Number = 0 And olCats.Count = 3 And rules.Count = 1, "the stand-in holds three categories and a rule", Err.Description

Set app = CreateObject("Tandrel4.Application")
app.Initialize ol
Check Err.Number = 0, "Initialize with Outlook 2007", Err.Number & " " & Err.Description
Check app.RulesSupported = True, "RulesSupported is True from Outlook 2007 on", app.RulesSupported
app.ReadMasterlist
Check Err.Number = 0, "ReadMasterlist", Err.Number & " " & Err.Description
Set cats = app.Categories
Check cats.Count(True) = 4, "the default category and Outlook's three", cats.Count(True)
Check app.Changed = False, "a fresh read is unchanged", app.Changed

Check cats.NameExist("Work", work), "Work is read", ""
Check work.InMasterlist, "Work is in the master list", work.InMasterlist
Check work.Color = 4, "Outlook colour 5 is colour 4", work.Color
Check work.ShortCut = 3, "Outlook shortcut 4 (Ctrl+F4) is shortcut 3", work.ShortCut
Check work.CategoryID = OutlookCategory(olCats, "Work").CategoryID, "Work carries Outlook's CategoryID", work.CategoryID
Check Len(work.CategoryID) = 38, "the CategoryID is a GUID in braces", work.CategoryID
Check cats.NameExist("Home", home), "Home is read", ""
Check home.Color = -1, "Outlook colour 0 is no colour (-1)", home.Color
Check home.ShortCut = 0, "Outlook shortcut 0 is none", home.ShortCut
Check cats.NameExist("Travel", cat), "Travel is read", ""
Check cat.Color = 24 And cat.ShortCut = 11, "the last colour (25) and shortcut (12, Ctrl+F12) map to 24 and 11", cat.Color & " " & cat.ShortCut

' A category added here reaches Outlook, with Outlook's numbers, and takes
' the CategoryID Outlook gives it.
Set cat = cats.Add("Errands", True, , 7, 2)
Check Err.Number = 0 And cat.CategoryID = "", "Errands added, without a CategoryID yet", Err.Description & " " & cat.CategoryID
app.SaveChanges
Check Err.Number = 0, "SaveChanges after Add", Err.Number & " " & Err.Description
Check olCats.Count = 4, "Outlook holds four categories", olCats.Count
Set olCat = OutlookCategory(olCats, "Errands")
Check Not olCat Is Nothing, "Errands is in Outlook", ""
Check olCat.Color = 8, "colour 7 reaches Outlook as 8", olCat.Color
Check olCat.ShortcutKey = 3, "shortcut 2 reaches Outlook as 3 (Ctrl+F3)", olCat.ShortcutKey
Check cat.CategoryID = olCat.CategoryID And cat.CategoryID <> "", "Errands took Outlook's CategoryID", cat.CategoryID & " " & olCat.CategoryID
Check app.Changed = False, "nothing is changed after SaveChanges", app.Changed
Check rules.SaveCount = 0, "no rule changed: the rules are not saved", rules.SaveCount

' A changed colour is written over Outlook's.
work.Color = 10
app.SaveChanges
Check Err.Number = 0 And OutlookCategory(olCats, "Work").Color = 11, "colour 10 reaches Outlook as 11", OutlookCategory(olCats, "Work").Color

' A deleted category is removed from Outlook.
cats.Delete CStr(home.ID)
Check Err.Number = 0 And olCats.Count = 4, "Delete leaves Outlook alone until SaveChanges", olCats.Count
app.SaveChanges
Check Err.Number = 0, "SaveChanges after Delete", Err.Number & " " & Err.Description
Check olCats.Count = 3 And OutlookCategory(olCats, "Home") Is Nothing, "Home is removed from Outlook", olCats.Count

' A rename reaches Outlook's category and every rule that names it.
work.Name = "Office"
Check Err.Number = 0 And app.Changed, "Work renamed to Office", Err.Description
Check rules.RuleText(1) = "Office|Office;Home", "the rule names Office at once", rules.RuleText(1)
Check rules.SaveCount = 0, "the rules are not saved before SaveChanges", rules.SaveCount
app.SaveChanges
Check Err.Number = 0, "SaveChanges after the rename", Err.Number & " " & Err.Description
Check rules.SaveCount = 1, "the rules are saved once", rules.SaveCount
Check rules.RuleText(1) = "Office|Office;Home", "the saved rule names Office", rules.RuleText(1)
Check Not OutlookCategory(olCats, "Office") Is Nothing And OutlookCategory(olCats, "Work") Is Nothing, "Outlook's Work is now Office", ""
Check OutlookCategory(olCats, "Office").CategoryID = work.CategoryID, "Office keeps its CategoryID", work.CategoryID

' Nothing changed: nothing is written.
app.SaveChanges
Check Err.Number = 0 And rules.SaveCount = 1 And olCats.Count = 3, "SaveChanges without changes saves nothing", rules.SaveCount

' Reading again gives what Outlook holds now.
app.ReadMasterlist
Check Err.Number = 0 And cats.Count(True) = 4, "ReadMasterlist again: the default category and three", cats.Count(True)
Check cats.NameExist("Office", cat) And cat.Color = 10, "Office read back with colour 10", ""

app.Terminate
Check Err.Number = 0 And ol.SinkCount = 0, "Terminate lets go of Outlook's events", ol.SinkCount
ol.Reset

Finish EXPECTED_CHECKS
