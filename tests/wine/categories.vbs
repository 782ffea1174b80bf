' The category model from VBScript: Categories and Category through the
' registered Application, with undo and redo, batch mode, counters, filters
' and enumeration. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 130

Function EndsWith(text, tail)
  EndsWith = (Right(text, Len(tail)) = tail)
End Function

' Calls Undo as often as it is possible (at most `limit` times) and returns
' how often that was.
Function UndoAll(app, limit)
  Dim n
  n = 0
  Do While app.UndoIsPossible And n < limit
    app.Undo
    n = n + 1
  Loop
  UndoAll = n
End Function

On Error Resume Next

Dim app, cats, def, work, home, mid, temp, nxt, added, c, found, value, key, n, i
Dim num, desc, src, names, a, b, tempId, held, app2, cats2, x, app3

Err.Clear
Set app = CreateObject("Tandrel4.Application")
Set cats = app.Categories
Check Err.Number = 0 And IsObject(cats), "Application.Categories", Err.Description

' --- Add ---------------------------------------------------------------
' The default category (key "0") first, as reading the master list makes it.
Set def = cats.Add("", False)
Check def.ID = 0 And def.Name = "", "the first category gets ID 0", def.ID
Set work = cats.Add("Work", True, "", 3, 4)
Check work.ID = 1 And work.Name = "Work", "Add gives the next ID", work.ID
Check work.InMasterlist = True And work.Color = 3 And work.ShortCut = 4, "Add stores flag, colour and shortcut", work.Color & " " & work.ShortCut
Check work.CategoryID = "" And VarType(work.ID) = vbLong, "CategoryID empty, ID a Long", VarType(work.ID)
Check work.Changed = True And cats.Changed = True And app.Changed = True, "Add marks the category, the collection and the Application changed", ""
Set home = cats.Add("Home", False)
Check home.Color = 0 And home.ShortCut = 0 And home.CategoryID = "", "left-out optional arguments count as empty text and 0", home.Color & " " & home.ShortCut
Set mid = cats.Add("Mid", True, , 5)
Check Err.Number = 0 And mid.Color = 5 And mid.ShortCut = 0, "an argument left out in the middle", Err.Description
Check cats.Add("WORK", False) Is work, "Add of an existing name in any letter case returns that category", ""
Check cats.Count = 4, "Count", cats.Count

' --- Finding by position, key and name ----------------------------------
Check cats.Item(2) Is work, "Item(2) by position", ""
Check cats(2) Is work, "the default member cats(2)", ""
Check cats(1) Is def, "cats(1) is the first category", ""
Check cats("1") Is work, "cats(""1"") by key", ""
Check cats("0") Is def, "cats(""0"") is the default category", ""
key = "2"
Check cats(key) Is home, "a key in a variable (passed by reference)", ""
n = 3
Check cats(n) Is home, "a position in a variable", ""
Check cats(2.5) Is work, "cats(2.5) rounds half to even to 2", ""
Check cats(3.5) Is mid, "cats(3.5) rounds half to even to 4", ""
Check cats(1.5) Is work, "cats(1.5) rounds to 2", ""
Check cats(2.4) Is work And cats(2.6) Is home, "cats(2.4) and cats(2.6) round to the nearest", ""
Check cats(CByte(2)) Is work And cats(CInt(2)) Is work And cats(CLng(2)) Is work, "Byte, Integer and Long positions", ""
Check cats(CSng(2.5)) Is work And cats(CDbl(3.5)) Is mid, "Single and Double positions", ""
Check cats(CCur(2.5)) Is work And cats(CCur(3.5)) Is mid, "Currency positions round half to even", ""
Err.Clear
Check cats(0) Is Nothing And cats(5) Is Nothing And cats(-1) Is Nothing, "positions outside the collection give Nothing", ""
Check cats("9") Is Nothing And cats("01") Is Nothing And cats("abc") Is Nothing And cats("") Is Nothing, "unknown keys give Nothing", ""
Check cats(Empty) Is Nothing And cats(Null) Is Nothing, "Empty and Null give Nothing", ""
Check cats(True) Is Nothing, "True (-1) gives Nothing", ""
Check Err.Number = 0, "a missing index raises nothing", Err.Description
Check cats(2, True) Is work And cats("1", False) Is work, "Item with IgnoreFilter", ""
Check cats(2) Is cats("1"), "one category is one object", ""

Err.Clear
found = "something"
Check cats.NameExist("work", found) = True, "NameExist ignores letter case", ""
' (Wine's VBScript crashes in TypeName(Nothing): no TypeName in details.)
Check found Is work, "NameExist hands out the category in Found", ""
Check cats.NameExist("nope", found) = False, "NameExist of an unknown name", ""
Check IsObject(found), "Found is an object after a failed search", VarType(found)
Check found Is Nothing, "Found is Nothing after a failed search", ""
Check cats.NameExist("Home") = True, "NameExist without Found", ""
Check cats.NameExist(" Home") = False, "NameExist does not trim", ""
Check cats.NameExist("", found) = True And found Is def, "the empty name is the default category", ""
Check Err.Number = 0, "NameExist raises nothing", Err.Description

' --- Renaming -----------------------------------------------------------
Err.Clear
work.Name = "Office"
Check Err.Number = 0 And work.Name = "Office", "rename", Err.Description
work.Name = "OFFICE"
Check Err.Number = 0 And work.Name = "OFFICE", "a rename of the letter case only is allowed", Err.Description
Err.Clear
home.Name = "office"
num = Err.Number
desc = Err.Description
src = Err.Source
Check num = &HD080222A, "renaming to another category's name raises cmNameExist", Hex(num)
Check desc = "Der Name existiert bereits." & vbCrLf & vbCrLf & "Bitte w" & Chr(228) & "hlen Sie einen anderen Namen.", "cmNameExist description with its line breaks", desc
Check EndsWith(src, "Tandrel4.Category.Name (0)"), "cmNameExist source ends with Category.Name", src
Check src = "Tandrel4; Tandrel4.Category.Name (0)", "cmNameExist source trail", src
Check home.Name = "Home", "a failed rename keeps the name", home.Name
Err.Clear
app.Undo
Check work.Name = "Office", "Undo of a rename", work.Name
app.Undo
Check work.Name = "Work", "a second Undo", work.Name
app.Redo
Check work.Name = "Office", "Redo of a rename", work.Name
app.Redo
Check work.Name = "OFFICE" And app.RedoIsPossible = False, "a second Redo reaches the end", work.Name
work.Name = "Work"

' --- Colour and shortcut --------------------------------------------------
work.Color = 7
Check work.Color = 7, "Color", work.Color
home.Name = "Home2"
work.Color = 25
Check work.Color = 7, "Color 25 keeps the colour", work.Color
Check work.Changed = True And app.UndoIsPossible = True, "Color 25 still counts as a change", ""
app.Undo
Check work.Color = 7 And home.Name = "Home2", "Color 25 was a step of its own", home.Name
app.Redo
work.Color = -3
Check work.Color = 7, "Color -3 keeps the colour", work.Color
app.Undo
Check home.Name = "Home2" And app.RedoIsPossible, "Color -3 was a step of its own", home.Name
work.Color = -2
Check work.Color = 7, "Color -2 means unchanged", work.Color
work.Color = 24
Check work.Color = 24, "Color 24 is stored", work.Color
app.Undo
Check work.Color = 7, "Undo of a colour", work.Color
app.Redo
Check work.Color = 24, "Redo of a colour", work.Color
work.ShortCut = 11
Check work.ShortCut = 11, "ShortCut 11", work.ShortCut
work.ShortCut = 12
Check work.ShortCut = 11, "ShortCut 12 keeps the shortcut", work.ShortCut
app.Undo
Check work.ShortCut = 11 And app.RedoIsPossible, "ShortCut 12 still counts as a step", work.ShortCut
app.Redo
work.ShortCut = 0
Check work.ShortCut = 0, "ShortCut 0 is stored", work.ShortCut
app.Undo
Check work.ShortCut = 11, "Undo of a shortcut", work.ShortCut
app.Redo
Check work.ShortCut = 0, "Redo of a shortcut", work.ShortCut
Err.Clear
work.Color = "abc"
Check Err.Number = 13 And work.Color = 24, "Color of a text that is no number is a type mismatch", Err.Number
Err.Clear

' --- InMasterlist ------------------------------------------------------------
home.InMasterlist = True
Check home.InMasterlist = True, "InMasterlist let", ""
app.Undo
Check home.InMasterlist = False, "Undo of InMasterlist", ""
app.Redo
Check home.InMasterlist = True, "Redo of InMasterlist", ""
home.Name = "Home3"
home.InMasterlist = True
app.Undo
Check home.Name = "Home2" And home.InMasterlist = True, "setting InMasterlist to its value records nothing", home.Name
app.Redo

' --- Delete --------------------------------------------------------------------
n = cats.Count
Err.Clear
cats.Delete "99"
cats.Delete "abc"
cats.Delete 0
cats.Delete Empty
Check Err.Number = 0 And cats.Count = n, "Delete of an index that names nothing does nothing", Err.Description
Set temp = cats.Add("Temp", True)
tempId = temp.ID
Check tempId = 4, "Temp gets ID 4", tempId
cats.Delete CStr(tempId)
Check cats.Count = n And cats(CStr(tempId)) Is Nothing, "Delete by key", cats.Count
Check temp.Name = "Temp", "a deleted category the script holds stays readable", temp.Name
Check cats.NameExist("Temp") = False, "the deleted name is free", ""
Set nxt = cats.Add("Next", True)
Check nxt.ID = 5, "IDs are never reused", nxt.ID
app.Undo
Check cats.NameExist("Next") = False, "Undo of an Add", ""
app.Undo
Check cats(CStr(tempId)).Name = "Temp" And cats.Count = n + 1, "Undo of a Delete", cats.Count
app.Redo
Check cats(CStr(tempId)) Is Nothing, "Redo of a Delete", ""
app.Redo
Check cats.NameExist("Next", found) And found.ID = 5, "Redo of an Add", ""
cats.Delete cats.Count
Check cats.NameExist("Next") = False, "Delete by position", ""
app.Undo
Check cats.NameExist("Next") = True, "Undo of a Delete by position", ""

' --- BatchMode ---------------------------------------------------------------------
app.BatchMode = True
work.Color = 1
work.ShortCut = 2
Set added = cats.Add("Batch", True)
app.BatchMode = False
Check app.BatchMode = False, "BatchMode off", ""
app.Undo
Check work.Color = 24 And work.ShortCut = 0 And cats.NameExist("Batch") = False, "one Undo takes back the whole batch", work.Color & " " & work.ShortCut
app.Redo
Check work.Color = 1 And work.ShortCut = 2 And cats.NameExist("Batch") = True, "one Redo repeats it", work.Color
app.BatchMode = True
app.BatchMode = False
work.Color = 3
app.Undo
Check work.Color = 1 And work.ShortCut = 2, "switching BatchMode on and off records nothing", work.Color

' --- The 50-step limit -----------------------------------------------------------
For i = 1 To 60
  work.Color = i Mod 20
Next
Check UndoAll(app, 100) = 50, "after 60 edits 50 undos are possible", ""
Check app.UndoIsPossible = False And app.RedoIsPossible = True, "then nothing more to undo", ""
app.Redo
app.Redo
app.Undo
work.Color = 9
Check app.RedoIsPossible = False, "a new edit drops the redo tail", ""

' --- Counters ---------------------------------------------------------------
Set app2 = CreateObject("Tandrel4.Application")
Set cats2 = app2.Categories
Check cats2.CountWithoutDefault(True) = -1, "CountWithoutDefault(True) of an empty collection is -1", cats2.CountWithoutDefault(True)
Check cats2.DefaultCategory Is Nothing, "an empty collection has no default category", ""
cats2.Add "", False
cats2.Add "A", True
cats2.Add "B", True
cats2.Add "C", False
Check cats2.Count = 4 And cats2.Count(True) = 4, "Count and Count(True)", cats2.Count
Check cats2.CountWithoutDefault = 3 And cats2.CountWithoutDefault(True) = 3, "CountWithoutDefault", cats2.CountWithoutDefault
a = "text"
b = Empty
cats2.CountDetails a, b
Check a = 2 And b = 2, "CountDetails counts the default category as not in the master list", a & " " & b
Check VarType(a) = vbLong And VarType(b) = vbLong, "CountDetails writes Longs", VarType(a) & " " & VarType(b)
Check cats2.DefaultCategory Is cats2("0") And cats2.DefaultCategory(True) Is cats2("0"), "DefaultCategory", ""
Check cats2.CountFilteredMember = 0, "CountFilteredMember without items", cats2.CountFilteredMember
Check cats2.Count(1) = 4 And cats2.Count(0) = 4, "IgnoreFilter given as a number", ""
Err.Clear
value = cats2.Count("abc")
Check Err.Number = 13, "IgnoreFilter that is no Boolean is a type mismatch", Err.Number
Err.Clear

' --- SetFilter -----------------------------------------------------------------
cats2.SetFilter 0, -1, 0, 1
Check Err.Number = 0, "SetFilter(0, -1, cmfmAll, cmmlMasterlistOnly)", Err.Description
Check cats2.Count = 2 And cats2.Count(True) = 4, "the master list filter shows two of four", cats2.Count
Check cats2(1).Name = "A" And cats2(1, True).Name = "", "Item follows the filter unless IgnoreFilter", cats2(1).Name
Check cats2("3") Is Nothing And cats2("3", True).Name = "C", "a filtered-out key only with IgnoreFilter", ""
Check cats2.FilterCategories = 0 And cats2.FilterTypes = -1 And cats2.FilterMember = 0 And cats2.FilterMasterlist = 1, "the filter values read back", ""
Check cats2.DefaultCategory Is Nothing And Not (cats2.DefaultCategory(True) Is Nothing), "the default category is filtered out", ""
Check cats2.CountWithoutDefault = 2 And cats2.CountWithoutDefault(True) = 3, "CountWithoutDefault under the filter", ""
names = ""
For Each c In cats2
  names = names & c.Name & ","
Next
Check names = "A,B,", "For Each shows the filtered categories", names
cats2.Add "D", False
Check cats2.Count = 3, "a category added under a filter is shown until the next SetFilter", cats2.Count
cats2.SetFilter 0, -1, 0, 2
Check cats2.Count = 3 And cats2(2).Name = "C", "cmmlNoMasterlist", cats2.Count
cats2.SetFilter 0, -1, 3, 0
Check cats2.Count = 5, "a member filter above 2 keeps every category", cats2.Count
cats2.SetFilter 0, -1, 0, 0
Check cats2.Count = 5 And cats2.Count(True) = 5, "SetFilter(0, -1, cmfmAll, cmmlAll) removes the filter", cats2.Count

' --- For Each ----------------------------------------------------------------
names = ""
n = 0
For Each c In cats2
  names = names & c.ID & ":" & c.Name & ","
  If c Is cats2("1") Then n = n + 1
Next
Check names = "0:,1:A,2:B,3:C,4:D,", "For Each visits every category in order", names
Check n = 1, "For Each hands out the same objects as Item", n
' Deleting inside the loop does not disturb it: it walks the categories
' that were there when it started.
names = ""
For Each c In cats2
  names = names & c.Name & ","
  If c.Name = "A" Then cats2.Delete "2"
  If c.Name = "C" Then cats2.Delete CStr(c.ID)
Next
Check Err.Number = 0, "deleting inside For Each raises nothing", Err.Description
Check names = ",A,B,C,D,", "For Each walks the categories present when it started", names
Check cats2.Count = 3 And cats2.NameExist("B") = False And cats2.NameExist("C") = False, "the deletions took effect", cats2.Count
names = ""
For Each c In cats2
  names = names & c.Name & ","
  If c.Name = "A" Then cats2.Add "E", True
Next
Check names = ",A,D,", "a category added inside the loop is not visited", names
Check cats2.Count = 4, "but it is added", cats2.Count

' --- Terminate -------------------------------------------------------------------
Set held = cats2("1")
app2.Terminate
Check Err.Number = 0, "Terminate", Err.Description
Check held.Name = "A" And held.ID = 1 And held.InMasterlist = True, "after Terminate a held category is readable", held.Name
Err.Clear
held.Color = 3
num = Err.Number
src = Err.Source
Check num = 91, "after Terminate setting Color raises 91", num
Check src = "Tandrel4; Tandrel4.Category.Color (0)", "error 91 source trail", src
Check held.Color = 0, "the colour is unchanged", held.Color
Err.Clear
held.Name = "Z"
Check Err.Number = 91 And held.Name = "A", "after Terminate renaming raises 91", Err.Number
Err.Clear
Check cats2.Count = 4 And cats2(2) Is held, "a held Categories still reads after Terminate", cats2.Count
Check app2.Categories Is Nothing, "the terminated Application hands out Nothing", ""
Check Err.Number = 0, "reading after Terminate raises nothing", Err.Description

Set held = Nothing
Set c = Nothing
Set found = Nothing
Set def = Nothing
Set work = Nothing
Set home = Nothing
Set mid = Nothing
Set temp = Nothing
Set nxt = Nothing
Set added = Nothing
Set cats = Nothing
Set cats2 = Nothing
Set app = Nothing
Set app2 = Nothing
Check Err.Number = 0, "objects released", Err.Description

Finish EXPECTED_CHECKS
