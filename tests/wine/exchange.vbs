' Import and export of the master list from VBScript through the registered
' DLL (and the real MSXML of Wine): round trips in txt, csv and xml, the
' refused formats, a folder that cannot be made, and a registry script that
' Wine's own registry editor exported. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 33
Const DIR = "C:\t4tests\exchange"

' A fresh Application bound to the stand-in Outlook 2003, with the default
' category, as reading the master list leaves it.
Function NewApp()
  Dim ol, a
  Set ol = CreateObject("Tandrel4Test.Outlook")
  ol.Version = "11.0.0.8312"
  Set a = CreateObject("Tandrel4.Application")
  a.Initialize ol
  a.Categories.Add "", False
  Set NewApp = a
End Function

' Every category but the default one as "name colour shortcut", joined by "|".
Function Listing(cats)
  Dim i, s
  s = ""
  For i = 2 To cats.Count(True)
    s = s & cats.Item(i, True).Name & " " & cats.Item(i, True).Color & " " & cats.Item(i, True).ShortCut & "|"
  Next
  Listing = s
End Function

' The list "Rot;Grün;Geschäftlich;Privat;Urlaub;Wichtig;Feiertage;Ideen;" as the
' 2002 and 2003 value bytes (UTF-16LE and a 16-bit zero) in the form reg.exe
' takes REG_BINARY data. Written out: Wine's VBScript has no AscW to make it.
Const MASTERLIST_HEX = "52006F0074003B0047007200FC006E003B0047006500730063006800E400660074006C006900630068003B005000720069007600610074003B00550072006C006100750062003B0057006900630068007400690067003B004600650069006500720074006100670065003B0049006400650065006E003B000000"

On Error Resume Next

Dim app, cats, fso, shell, stream, num, desc, src, i, ext, before, back, appBack, text, key, rc

Set fso = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
If fso.FolderExists(DIR) Then fso.DeleteFolder DIR, True
Err.Clear

Set app = NewApp()
Set cats = app.Categories
' Built one by one: Wine's VBScript does not take this Array call split over
' two lines.
Dim names(5)
names(0) = "B" & Chr(252) & "ro " & Chr(196) & "rger"
' Characters beyond Windows-1252 are left to the native tests: Wine's
' VBScript has no ChrW.
names(1) = "Stra" & Chr(223) & "e"
names(2) = "O'Neil"
names(3) = """Boss"""
names(4) = "  blanks  "
names(5) = "Quote""inside"
For i = 0 To UBound(names)
  cats.Add names(i), True, "", i + 1, i + 2
Next
before = Listing(cats)
Check Err.Number = 0 And cats.Count(True) = 7, "the categories to export", Err.Description

' --- round trips -----------------------------------------------------------
For Each ext In Array("txt", "csv", "xml")
  Err.Clear
  cats.ExportMasterlist DIR & "\" & ext & "\list." & ext
  Check Err.Number = 0, "export to " & ext & " (its folder made)", Hex(Err.Number) & " " & Err.Description
  Check fso.FileExists(DIR & "\" & ext & "\list." & ext), "the " & ext & " file exists", ""
  Set appBack = NewApp()
  appBack.Categories.ImportMasterlist DIR & "\" & ext & "\list." & ext
  Check Err.Number = 0, "import of " & ext, Hex(Err.Number) & " " & Err.Description
  back = Listing(appBack.Categories)
  Check back = before, ext & " round trip", back
  appBack.Terminate
  Set appBack = Nothing
Next

' The XML file as MSXML wrote it.
text = fso.OpenTextFile(DIR & "\xml\list.xml", 1, False, -2).ReadAll
' Read as ANSI: the byte-order mark comes first as three characters.
Check InStr(text, "<?xml version=""1.0""?>") = 4, "the XML file starts with the declaration", Left(text, 40)
Check InStr(text, "<categories default=""Red Category"" lastSavedTime=""") > 0, "the root's first attributes", text
Check InStr(text, "<category xmlns="""" name=""O'Neil"" color=""3"" keyboardShortcut=""4""/>") > 0, "a category element in attribute order", text

' --- refused formats ---------------------------------------------------------
Err.Clear
cats.ExportMasterlist DIR & "\list.TXT"
num = Err.Number
desc = Err.Description
src = Err.Source
Check num = &HD0802248, "list.TXT is refused with cmFileTypeNotSupported", Hex(num)
Check desc = "Das Dateiformat wird nicht unterst" & Chr(252) & "tzt.", "its German text", desc
Check src = "Tandrel4; Tandrel4.CatsExternBase.CreateChild (0); Tandrel4.CatsExternBase.ExportMasterlist (0); Tandrel4.Categories.ExportMasterlist (0)", "its source trail", src
Err.Clear
cats.ImportMasterlist DIR & "\list.TXT"
Check Err.Number = &HD0802248, "importing list.TXT is refused too", Hex(Err.Number)
Err.Clear
cats.ExportMasterlist DIR & "\list.reg"
num = Err.Number
desc = Err.Description
Check num = &HD0802248, "an export to .reg is refused", Hex(num)
Check desc = "Das Dateiformat wird nicht unterst" & Chr(252) & "tzt.", "with the German text", desc
Check Not fso.FileExists(DIR & "\list.reg"), "and writes nothing", ""

' --- a folder that cannot be made --------------------------------------------
Set stream = fso.CreateTextFile(DIR & "\afile", True)
stream.Write "x"
stream.Close
Set stream = Nothing
Err.Clear
Err.Clear
cats.ExportMasterlist DIR & "\afile\below\list.csv"
num = Err.Number
desc = Err.Description
Check num = &HD0802252, "an export into a folder that cannot be made raises cmCreateFile", Hex(num) & " " & desc
Check Right(desc, Len(vbCrLf & DIR & "\afile\below\list.csv")) = vbCrLf & DIR & "\afile\below\list.csv", "its description ends with the path on its own line", desc
Check Left(desc, 32) = "Fehler beim Erstellen der Datei:", "and begins with the German text", desc

' --- a script of Wine's registry editor ----------------------------------------
For Each key In Array("10.0", "11.0")
  Err.Clear
  rc = shell.Run("reg add ""HKCU\Software\Microsoft\Office\" & key & "\Outlook\Categories"" /v Masterlist /t REG_BINARY /d " & MASTERLIST_HEX & " /f", 0, True)
  rc = shell.Run("regedit /E """ & DIR & "\ml" & key & ".reg"" ""HKEY_CURRENT_USER\Software\Microsoft\Office\" & key & "\Outlook\Categories""", 0, True)
  Check fso.FileExists(DIR & "\ml" & key & ".reg"), "regedit /E wrote the " & key & " key", rc
  Set appBack = NewApp()
  appBack.Categories.ImportMasterlist DIR & "\ml" & key & ".reg"
  back = Listing(appBack.Categories)
  text = "Rot -2 -2|Gr" & Chr(252) & "n -2 -2|Gesch" & Chr(228) & "ftlich -2 -2|Privat -2 -2|Urlaub -2 -2|Wichtig -2 -2|Feiertage -2 -2|Ideen -2 -2|"
  Check Err.Number = 0 And back = text, "the " & key & " script imports the names", Hex(Err.Number) & " " & Err.Description & " " & back
  appBack.Terminate
  Set appBack = Nothing
  shell.Run "reg delete ""HKCU\Software\Microsoft\Office\" & key & """ /f", 0, True
Next

' --- an import is one undo step ---------------------------------------------
Set appBack = NewApp()
appBack.Categories.Add "Rot", True, "", 1, 1
appBack.Categories.ImportMasterlist DIR & "\txt\list.txt"
Check appBack.BatchMode = False, "batch mode is off after an import", ""
appBack.Undo
Check appBack.Categories.Count(True) = 2, "one Undo takes the import back", appBack.Categories.Count(True)
appBack.Terminate
Set appBack = Nothing

app.Terminate
Set cats = Nothing
Set app = Nothing
Check Err.Number = 0, "objects released", Err.Description

Finish EXPECTED_CHECKS
