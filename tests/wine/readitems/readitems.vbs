' Reading Outlook's items with Application.ReadItems from VBScript, over the
' stand-in's test mailbox (mailbox.txt): the folder list as a VBScript
' array, a Scripting.Dictionary and a collection-like object; categories
' with their member counts; moving and adding categories; SaveChanges
' writing the changed messages (saved\<entry id>.txt); a list entry that is
' no FolderData; GetOutlookItem. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 27

On Error Resume Next

' A collection as VB's Collection looks to the library: Count and a
' 1-based default Item.
Class FolderBag
  Private items_
  Private count_
  Private Sub Class_Initialize()
    ' Wine 8's VBScript takes no fixed-size array inside a class.
    Set items_ = CreateObject("Scripting.Dictionary")
    count_ = 0
  End Sub
  Public Property Get Count()
    Count = count_
  End Property
  Public Default Function Item(index)
    Set Item = items_(index - 1)
  End Function
  Public Sub Add(folder)
    items_.Add count_, folder
    count_ = count_ + 1
  End Sub
End Class

Function NewFolder(entryId, storeId, name, count)
  Dim f
  Set f = CreateObject("Tandrel4.FolderData")
  f.Init entryId, storeId, name, count, False
  Set NewFolder = f
End Function

' The item with this subject, or Nothing.
Function ItemBySubject(app, subject)
  Dim it
  Set ItemBySubject = Nothing
  For Each it In app.OutlookItems
    If it.Subject = subject Then Set ItemBySubject = it
  Next
End Function

' The category of this name, or Nothing.
Function CategoryNamed(app, name)
  Dim found
  Set found = Nothing
  app.Categories.NameExist name, found
  Set CategoryNamed = found
End Function

' Items outside the junk folder (whatever the reader does with that one).
Function CountOutsideJunk(app)
  Dim it, n
  n = 0
  For Each it In app.OutlookItems
    If it.Folder <> "Junk E-mail" Then n = n + 1
  Next
  CountOutsideJunk = n
End Function

Function SavedText(fso, folder, entryId)
  Dim file
  SavedText = "<none>"
  If fso.FileExists(folder & "\" & entryId & ".txt") Then
    Set file = fso.OpenTextFile(folder & "\" & entryId & ".txt", 1)
    SavedText = file.ReadLine
    file.Close
  End If
End Function

Dim fso, here, saved, ol, app, list(2), dict, bag, bad(1), cat, work, priv, it, item, none

Set fso = CreateObject("Scripting.FileSystemObject")
here = fso.GetAbsolutePathName(".")
saved = here & "\saved-vbs"
If fso.FolderExists(saved) Then fso.DeleteFolder saved, True
fso.CreateFolder saved

Set ol = CreateObject("Tandrel4Test.Outlook")
ol.Reset
ol.Version = "11.0.0.8312"
ol.LoadMailbox here & "\mailbox.txt", saved
Check Err.Number = 0, "the stand-in loads the test mailbox", Err.Description

Set app = CreateObject("Tandrel4.Application")
app.Initialize ol

' A VBScript array: Inbox, the junk folder and Projects of the first store.
Set list(0) = NewFolder("0000F001", "0000AA01", "Inbox", 3)
Set list(1) = NewFolder("0000F002", "0000AA01", "Junk E-mail", 1)
Set list(2) = NewFolder("0000F003", "0000AA01", "Projects", 2)
Err.Clear
app.ReadItems list
Check Err.Number = 0, "ReadItems with a VBScript array", Err.Number & " " & Err.Description
Check CountOutsideJunk(app) = 5, "the items of Inbox and Projects are read", CountOutsideJunk(app)
Check ol.OpenTables = 0, "every table lets go of its raw table", ol.OpenTables
Set work = CategoryNamed(app, "Work")
Set priv = CategoryNamed(app, "Private")
Check Not work Is Nothing, "the items' category Work exists", ""
Check work.MemberCount = 3, "Work has three members", work.MemberCount
Check priv.MemberCount = 2, "Private has two members", priv.MemberCount
Check CategoryNamed(app, "Project A").MemberCount = 1, "Project A has one member", ""
Set it = ItemBySubject(app, "Hello")
Check it.CategoriesString = "Work;Private", "an item's categories in the message's order", it.CategoriesString
Check it.MessageClass = "ipm.note", "the message class", it.MessageClass
Check ItemBySubject(app, "Meeting").CategoriesCount = 0, "an item without categories", ""

' Recategorise: Report moves to Private, Meeting gets Work.
ItemBySubject(app, "Report").MoveToCategory priv
ItemBySubject(app, "Meeting").CategoriesAdd work
Check Err.Number = 0, "MoveToCategory and CategoriesAdd", Err.Number & " " & Err.Description
Check work.MemberCount = 3 And priv.MemberCount = 3, "the counts follow", work.MemberCount & " " & priv.MemberCount
Check app.OutlookItems.Changed, "the items are changed", ""
app.SaveChanges
Check Err.Number = 0, "SaveChanges", Err.Number & " " & Err.Description
Check SavedText(fso, saved, "0000E002") = "Private", "Report's message now holds Private", SavedText(fso, saved, "0000E002")
Check SavedText(fso, saved, "0000E003") = "Work", "Meeting's message now holds Work", SavedText(fso, saved, "0000E003")
Check SavedText(fso, saved, "0000E001") = "<none>", "an unchanged message is not written", SavedText(fso, saved, "0000E001")
Check Not app.OutlookItems.Changed, "nothing changed after saving", ""

' GetOutlookItem: Outlook's own item.
Set item = ItemBySubject(app, "Task one").GetOutlookItem
Check item.Subject = "Task one" And item.EntryID = "0000E005", "GetOutlookItem hands out Outlook's item", item.EntryID

' A Scripting.Dictionary: its items, whatever the keys.
Set dict = CreateObject("Scripting.Dictionary")
dict.Add "projects", NewFolder("0000F003", "0000AA01", "Projects", 2)
dict.Add "inbox", NewFolder("0000F001", "0000AA01", "Inbox", 3)
Err.Clear
app.ReadItems dict
Check Err.Number = 0 And app.OutlookItems.Count = 5, "ReadItems with a Scripting.Dictionary", Err.Number & " " & app.OutlookItems.Count

' A collection-like object.
Set bag = New FolderBag
bag.Add NewFolder("0000F003", "0000AA01", "Projects", 2)
Err.Clear
app.ReadItems bag
Check Err.Number = 0 And app.OutlookItems.Count = 2, "ReadItems with a collection", Err.Number & " " & app.OutlookItems.Count

' A store that does not know Keywords.
Err.Clear
bag.Add NewFolder("0000F101", "0000AA02", "Old mail", 1)
app.ReadItems bag
Check Err.Number = 0, "ReadItems over a store without Keywords", Err.Number & " " & Err.Description

' Nothing to read: the items are gone.
none = Empty
Err.Clear
app.ReadItems none
Check Err.Number = 0 And app.OutlookItems.Count = 0, "ReadItems with Empty reads nothing", Err.Number & " " & app.OutlookItems.Count

' An entry that is no FolderData.
Set bad(0) = NewFolder("0000F001", "0000AA01", "Inbox", 3)
Set bad(1) = CreateObject("Scripting.Dictionary")
Err.Clear
app.ReadItems bad
Check Err.Number = 13, "an entry that is no FolderData raises 13", Err.Number & " " & Err.Description
bad(1) = "Inbox"
Err.Clear
app.ReadItems bad
Check Err.Number = 13, "a text entry raises 13", Err.Number & " " & Err.Description

Err.Clear
app.Terminate
Check Err.Number = 0 And ol.OpenTables = 0, "Terminate", Err.Number & " " & ol.OpenTables
Finish EXPECTED_CHECKS
