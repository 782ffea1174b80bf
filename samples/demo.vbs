' Tandrel4 sample: drives the library the way a host script does.
' Run by scripts/demo.sh under Wine (or on Windows with cscript after
' "regsvr32 Tandrel4.dll"): cscript //nologo demo.vbs folders.csv
Option Explicit

Dim app, lang, fso, file, line, fields, folders, f, n, sample

sample = "folders.csv"
If WScript.Arguments.Count > 0 Then sample = WScript.Arguments(0)

Set app = CreateObject("Tandrel4.Application")
WScript.Echo "Created " & TypeName(app) & " (Tandrel4.Application)"

Set lang = app.ToILanguage
WScript.Echo "Language: " & lang.LanguageID
lang.LanguageID = 1033
WScript.Echo "Language after choosing English: " & lang.LanguageID
lang.LanguageID = 1036
WScript.Echo "French is not offered; language now: " & lang.LanguageID

' The folder records a host hands to ReadItems, built from the sample list.
Set fso = CreateObject("Scripting.FileSystemObject")
Set file = fso.OpenTextFile(sample, 1)
Set folders = CreateObject("Scripting.Dictionary")
line = file.ReadLine  ' the header line
Do While Not file.AtEndOfStream
  line = file.ReadLine
  If Len(line) > 0 Then
    fields = Split(line, ";")
    Set f = CreateObject("Tandrel4.FolderData")
    f.Init fields(0), fields(1), fields(2), CLng(fields(3)), (fields(4) = "True")
    folders.Add CStr(folders.Count + 1), f
  End If
Loop
file.Close

WScript.Echo "Folders read from " & sample & ": " & folders.Count
For Each n In folders.Keys
  Set f = folders(n)
  If f.ItemsCount = 0 Then
    WScript.Echo "  " & f.Name & ": empty, the reader will skip it"
  Else
    WScript.Echo "  " & f.Name & ": " & f.ItemsCount & " items" & _
      IIf(f.HasChilds, ", has subfolders", "")
  End If
Next

' Categories: add, edit, undo and redo, as a front end would. (Reading
' Outlook's own master list needs Outlook; here the list is made by hand.)
Dim cats, work, personal, travel, c
Set cats = app.Categories
Set work = cats.Add("Projekt A", True, "", 5, 1)
Set personal = cats.Add("Privat", True)
Set travel = cats.Add("Reisen", False)
WScript.Echo "Categories: " & cats.Count
For Each c In cats
  WScript.Echo "  [" & c.ID & "] " & c.Name & ", colour " & c.Color & _
    IIf(c.InMasterlist, ", in the master list", "")
Next

work.Name = "Projekt Alpha"
work.Color = 9
WScript.Echo "Renamed to '" & work.Name & "', colour " & work.Color
app.Undo
WScript.Echo "Undo: colour " & work.Color
app.Undo
WScript.Echo "Undo: name '" & work.Name & "'"
app.Redo
WScript.Echo "Redo: name '" & work.Name & "'"

app.BatchMode = True
cats.Delete CStr(personal.ID)
cats.Delete CStr(travel.ID)
app.BatchMode = False
WScript.Echo "Deleted two in one batch: " & cats.Count & " left"
app.Undo
WScript.Echo "One undo brings both back: " & cats.Count & ", " & cats(CStr(personal.ID)).Name & _
  " and " & cats(CStr(travel.ID)).Name

' Errors arrive with a number, a description and the trail of procedures.
On Error Resume Next
work.Name = "privat"
If Err.Number <> 0 Then
  WScript.Echo "Renaming '" & work.Name & "' to 'privat': error &H" & Hex(Err.Number) & " from " & Err.Source
  WScript.Echo "  " & Replace(Err.Description, vbCrLf, " / ")
End If
Err.Clear
app.ReadMasterlist
If Err.Number <> 0 Then
  WScript.Echo "ReadMasterlist: error &H" & Hex(Err.Number) & ": " & Err.Description
End If
On Error GoTo 0

app.Terminate

Set app = Nothing
WScript.Echo "Done."

Function IIf(cond, a, b)
  If cond Then IIf = a Else IIf = b
End Function
