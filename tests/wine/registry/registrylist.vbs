' The master list of Outlook 97 to 2003, which lives in the user's registry.
' run-wine-tests.sh runs this once per step and checks the registry value
' itself between the steps:
'   cscript registrylist.vbs <version> write   reads the (absent) list, adds
'                                              "A" and saves
'   cscript registrylist.vbs <version> read    reads the list the runner put
'                                              there ("B"), deletes it, saves
' <version> is the Version text the Outlook stand-in reports ("8.5", ...).
' Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 9

On Error Resume Next

Dim version, mode, ol, app, cats, cat, found
version = WScript.Arguments(0)
mode = WScript.Arguments(1)
Check Err.Number = 0 And (mode = "write" Or mode = "read"), "arguments: version and step", Err.Description

Set ol = CreateObject("Tandrel4Test.Outlook")
Check Err.Number = 0, "the Outlook stand-in is created", Err.Description
ol.Version = version
Set app = CreateObject("Tandrel4.Application")
app.Initialize ol
Check Err.Number = 0, "Initialize with Outlook " & version, Err.Number & " " & Err.Description
Check app.RulesSupported = False, "Outlook " & version & " has no category rules", app.RulesSupported
Set cats = app.Categories

Err.Clear
app.ReadMasterlist
Check Err.Number = 0, "ReadMasterlist", Err.Number & " " & Err.Description
If mode = "write" Then
  Check cats.Count(True) = 1, "without a value the list holds only the default category", cats.Count(True)
  Set cat = cats.Add("A", True)
  Check Err.Number = 0 And app.Changed, "Add A to the master list", Err.Description
  app.SaveChanges
  Check Err.Number = 0, "SaveChanges", Err.Number & " " & Err.Description
Else
  Check cats.Count(True) = 2, "the list read holds the default category and B", cats.Count(True)
  found = cats.NameExist("B", cat)
  Check found, "B is read", ""
  ' Every category of the master list goes: the list is empty.
  cats.Delete CStr(cat.ID)
  app.SaveChanges
  Check Err.Number = 0 And cats.Count(True) = 1, "B deleted and the list saved", Err.Number & " " & Err.Description
End If

app.Terminate
Check Err.Number = 0 And ol.LogoffCount = 1, "Terminate logs off", Err.Description & " " & ol.LogoffCount

Finish EXPECTED_CHECKS
