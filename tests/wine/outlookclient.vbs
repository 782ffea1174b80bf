' Binding Tandrel4 to Outlook's Application object (the stand-in): versions
' the library does not manage, an object without events, Outlook's Quit,
' and the MAPI session that reading opens and Terminate closes. Prints
' PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 26

On Error Resume Next

Dim ol, noEvents, app, cats, cat, value, before

Set ol = CreateObject("Tandrel4Test.Outlook")
Check Err.Number = 0, "the Outlook stand-in is created", Err.Description
ol.Reset

' Outlook 2010 and later: neither a registry list nor rules of the 2007 kind.
ol.Version = "14.0"
Set app = CreateObject("Tandrel4.Application")
app.Initialize ol
Check Err.Number = 0, "Initialize with Outlook 14.0", Err.Number & " " & Err.Description
Check ol.SinkCount = 1, "Initialize follows Outlook's Quit", ol.SinkCount
Check app.RulesSupported = False, "Outlook 14.0 has no rules support", app.RulesSupported
Err.Clear
app.ReadMasterlist
Check Err.Number = 91, "ReadMasterlist for Outlook 14.0 raises 91", Err.Number & " " & Err.Description
Check Err.Description = "Object variable or With block variable not set", "its description", Err.Description
Check Err.Source = "Tandrel4; Tandrel4.Application.ReadMasterlist (0)", "its source names Application.ReadMasterlist", Err.Source
Err.Clear
app.Initialize ol
Check Err.Number = 0 And ol.SinkCount = 1, "Initialize again replaces the Quit subscription", ol.SinkCount
app.Terminate
Check Err.Number = 0 And ol.SinkCount = 0, "Terminate ends the Quit subscription", ol.SinkCount
Set app = Nothing

' An Application object without events cannot tell the library that it quits.
Set noEvents = CreateObject("Tandrel4Test.OutlookNoEvents")
Check Err.Number = 0, "the stand-in without events is created", Err.Description
noEvents.Version = "11.0.0.8312"
Set app = CreateObject("Tandrel4.Application")
Err.Clear
app.Initialize noEvents
Check Err.Number = 459, "Initialize with an object without events raises 459", Err.Number & " " & Err.Description
Check Err.Source = "Tandrel4; Tandrel4.Application.Initialize (0)", "its source names Application.Initialize", Err.Source
Err.Clear
app.Terminate
Set app = Nothing

' Quit: the library lets go of Outlook and keeps its categories; the MAPI
' session opens once, on the first read, with Outlook's logon shared.
ol.Reset
ol.Version = "11.0.0.8312"
Set app = CreateObject("Tandrel4.Application")
app.Initialize ol
Check Err.Number = 0 And ol.SinkCount = 1, "Initialize with Outlook 2003", Err.Number & " " & Err.Description
Check ol.SessionsCreated = 0 And ol.LogonCount = 0, "no MAPI session before the first read", ol.SessionsCreated
app.ReadMasterlist
app.ReadMasterlist
Check Err.Number = 0, "ReadMasterlist twice", Err.Number & " " & Err.Description
Check ol.SessionsCreated = 1 And ol.LogonCount = 1, "one session and one logon for two reads", ol.SessionsCreated & " " & ol.LogonCount
Check ol.LastLogonArgs = "profile=missing;password=missing;dialog=missing;newsession=False;parent=missing;nomail=True", "the logon shares Outlook's session", ol.LastLogonArgs
Set cats = app.Categories
Set cat = cats.Add("Kept", True)
before = cats.Count(True)
ol.FireQuit
Check Err.Number = 0, "Outlook fires Quit", Err.Description
Check ol.SinkCount = 0, "Quit ends the subscription", ol.SinkCount
Check cats.Count(True) = before, "the categories stay after Quit", cats.Count(True) & " of " & before
Check cats.NameExist("Kept", value), "Kept is still there after Quit", ""
Check cat.Name = "Kept" And app.Categories Is cats, "the objects stay usable after Quit", cat.Name
Check ol.LogoffCount = 0, "Quit leaves the session to Terminate", ol.LogoffCount
app.Terminate
Check Err.Number = 0, "Terminate after Quit", Err.Description
Check ol.LogoffCount = 1, "Terminate logs off", ol.LogoffCount
app.Terminate
Check Err.Number = 0 And ol.LogoffCount = 1, "Terminate twice logs off once", ol.LogoffCount
Set cat = Nothing
Set cats = Nothing
Set app = Nothing
ol.Reset

Finish EXPECTED_CHECKS
