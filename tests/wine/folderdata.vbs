' Tandrel4.FolderData from VBScript: a fresh object, Init and the five
' getters, the language view. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 38

On Error Resume Next

Dim f, f1, g, lang, entry, store, name, i

Err.Clear
Set f = CreateObject("Tandrel4.FolderData")
Check Err.Number = 0 And IsObject(f), "CreateObject Tandrel4.FolderData", Err.Description
Check TypeName(f) = "FolderData" Or TypeName(f) = "_FolderData", "TypeName of FolderData", TypeName(f)
Err.Clear
Set f1 = CreateObject("Tandrel4.FolderData.1")
Check Err.Number = 0 And IsObject(f1), "CreateObject Tandrel4.FolderData.1", Err.Description

' A fresh object has empty texts, no items and no subfolders.
Check f.EntryID = "" And VarType(f.EntryID) = vbString, "fresh EntryID is empty text", f.EntryID
Check f.StoreID = "", "fresh StoreID is empty", f.StoreID
Check f.Name = "", "fresh Name is empty", f.Name
Check f.ItemsCount = 0 And VarType(f.ItemsCount) = vbLong, "fresh ItemsCount is 0", f.ItemsCount
Check f.HasChilds = False And VarType(f.HasChilds) = vbBoolean, "fresh HasChilds is False", f.HasChilds
Check Err.Number = 0, "getters of a fresh object raise nothing", Err.Description

' Init stores all five values at once.
Err.Clear
f.Init "00000000ABCDEF0102", "0000000038A1BB10", "Posteingang", 42, True
Check Err.Number = 0, "Init", Err.Description
Check f.EntryID = "00000000ABCDEF0102", "EntryID round trip", f.EntryID
Check f.StoreID = "0000000038A1BB10", "StoreID round trip", f.StoreID
Check f.Name = "Posteingang", "Name round trip", f.Name
Check f.ItemsCount = 42, "ItemsCount round trip", f.ItemsCount
Check f.HasChilds = True, "HasChilds round trip", f.HasChilds

' Non-ASCII text: "Bitte waehlen Sie" with the real a-umlaut made by Chr, so that
' the script file itself stays ASCII.
name = "Bitte w" & Chr(228) & "hlen Sie " & Chr(214) & Chr(223)
f.Init "E", "S", name, 1, False
Check f.Name = name, "Name with umlauts round trip", f.Name
Check Len(f.Name) = 19, "Name keeps its length", Len(f.Name)
Check Asc(Mid(f.Name, 8, 1)) = 228, "the umlaut arrives unchanged", Asc(Mid(f.Name, 8, 1))

' A long entry identifier (MAPI entry ids of some stores are long hex texts).
entry = ""
For i = 1 To 256
  entry = entry & "0123456789ABCDEF"
Next
store = String(300, "F")
f.Init entry, store, "", 0, False
Check Len(f.EntryID) = 4096 And f.EntryID = entry, "long EntryID round trip", Len(f.EntryID)
Check f.StoreID = store, "long StoreID round trip", Len(f.StoreID)
Check f.Name = "", "empty Name round trip", f.Name
Check f.HasChilds = False, "HasChilds False round trip", f.HasChilds

' Arguments are converted as for any Automation call.
Err.Clear
f.Init 123, "S", "N", "17", 1
Check Err.Number = 0, "Init converts its arguments", Err.Description
Check f.EntryID = "123" And f.ItemsCount = 17 And f.HasChilds = True, "converted values", f.EntryID & " " & f.ItemsCount & " " & f.HasChilds
Err.Clear
f.Init "E", "S", "N", 2147483647, False
Check f.ItemsCount = 2147483647, "largest ItemsCount", f.ItemsCount
f.Init "E", "S", "N", -1, False
Check f.ItemsCount = -1, "negative ItemsCount is stored as given", f.ItemsCount

' Wrong calls leave the object as it was.
Err.Clear
f.Init "X", "Y"
Check Err.Number <> 0, "Init with two arguments raises", Err.Number
Check f.EntryID = "E", "a failed Init changes nothing", f.EntryID
Err.Clear
f.Init "X", "Y", "Z", "many", False
Check Err.Number = 13, "Init with a non-numeric count raises type mismatch", Err.Number
Check f.EntryID = "E", "a rejected Init changes nothing", f.EntryID
Err.Clear
f.Name = "other"
Check Err.Number <> 0, "Name has no setter", Err.Number
Check f.Name = "N", "Name unchanged", f.Name

' Objects are independent.
Set g = CreateObject("Tandrel4.FolderData")
g.Init "G", "G", "G", 7, True
Check f.EntryID = "E" And g.EntryID = "G", "two FolderData objects keep their own values", f.EntryID & g.EntryID

' The language view.
Err.Clear
Set lang = f.ToILanguage
Check Err.Number = 0 And Not (lang Is Nothing), "ToILanguage", Err.Description
Check lang.LanguageID = 1031, "LanguageID reads 1031", lang.LanguageID
lang.LanguageID = 1033
Check f1.ToILanguage.LanguageID = 1033, "LanguageID is process-wide", f1.ToILanguage.LanguageID
lang.LanguageID = 1031
Check lang.SupportedLanguages Is Nothing, "SupportedLanguages is Nothing", ""

Set lang = Nothing
Set f = Nothing
Set f1 = Nothing
Set g = Nothing
Check Err.Number = 0, "objects released", Err.Description

Finish EXPECTED_CHECKS
