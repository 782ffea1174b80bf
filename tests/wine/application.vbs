' Tandrel4.Application from VBScript: creation, the language view, the
' members that forward to the core, the errors of binding and reading
' without Outlook.
' Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 58

On Error Resume Next

Dim app, app1, lang, lang2, other, value, list, folder

Err.Clear
Set app = CreateObject("Tandrel4.Application")
Check Err.Number = 0, "CreateObject Tandrel4.Application", Err.Description
Check IsObject(app), "Application is an object", TypeName(app)
' VBScript names an object by its class where the object tells it
' (IProvideClassInfo), otherwise by its default interface.
Check TypeName(app) = "Application" Or TypeName(app) = "_Application", "TypeName of Application", TypeName(app)

Err.Clear
Set app1 = CreateObject("Tandrel4.Application.1")
Check Err.Number = 0 And IsObject(app1), "CreateObject Tandrel4.Application.1", Err.Description
Check Not (app Is app1), "two Application objects are distinct", ""

Err.Clear
Set lang = app.ToILanguage
Check Err.Number = 0, "ToILanguage", Err.Description
Check Not (lang Is Nothing), "ToILanguage returns an object", ""
value = TypeName(lang)
Check value = "_ILanguage" Or value = "ILanguage" Or value = "Application", "TypeName of the language view", value
Set lang2 = app.ToILanguage
Check lang Is lang2, "ToILanguage returns the same object each time", ""

Err.Clear
value = lang.LanguageID
Check Err.Number = 0 And value = 1031, "LanguageID reads 1031 at first", Err.Description & " " & value
Check VarType(value) = vbLong, "LanguageID is a Long", VarType(value)
lang.LanguageID = 1033
Check lang.LanguageID = 1033, "LanguageID accepts 1033", lang.LanguageID
lang.LanguageID = 1036
Check lang.LanguageID = 1031, "LanguageID 1036 stores 1031", lang.LanguageID
lang.LanguageID = 1033
lang.LanguageID = 0
Check lang.LanguageID = 1031, "LanguageID 0 stores 1031", lang.LanguageID
lang.LanguageID = "1033"
Check Err.Number = 0 And lang.LanguageID = 1033, "LanguageID accepts the text 1033", Err.Description

' The setting is process-wide: every object's language view shows it.
Set other = CreateObject("Tandrel4.FolderData").ToILanguage
Check other.LanguageID = 1033, "LanguageID is shared with FolderData", other.LanguageID
Set other = app1.ToILanguage
Check other.LanguageID = 1033, "LanguageID is shared between Application objects", other.LanguageID
other.LanguageID = 1031
Check lang.LanguageID = 1031, "LanguageID set through another object", lang.LanguageID

Err.Clear
lang.LanguageID = "abc"
Check Err.Number = 13, "LanguageID rejects text that is no number (type mismatch)", Err.Number
Check lang.LanguageID = 1031, "a rejected value leaves LanguageID", lang.LanguageID

Err.Clear
Check lang.SupportedLanguages Is Nothing, "SupportedLanguages is Nothing", Err.Description

' Names that do not exist, and members of the language view that the
' default interface does not carry.
Err.Clear
value = app.NoSuchMember
Check Err.Number = 438, "unknown member raises 438", Err.Number
Err.Clear
value = app.LanguageID
Check Err.Number = 438, "LanguageID is not on the default interface", Err.Number

' Reading and binding without Outlook (outlookclient.vbs and
' outlook2007.vbs bind the library to the Outlook stand-in).
Err.Clear
app.ReadMasterlist
Check Err.Number = 91, "ReadMasterlist without Outlook raises 91", Err.Number & " " & Err.Description
Check Err.Description = "Object variable or With block variable not set", "its description", Err.Description
Check Err.Source = "Tandrel4; Tandrel4.Application.ReadMasterlist (0)", "its source names Application.ReadMasterlist", Err.Source
Err.Clear
app.Initialize Nothing
Check Err.Number = 91, "Initialize Nothing raises 91", Err.Number & " " & Err.Description
Check Err.Source = "Tandrel4; Tandrel4.Application.Initialize (0)", "its source names Application.Initialize", Err.Source
' An object that is no Outlook: it offers no events to follow.
Err.Clear
app.Initialize CreateObject("Tandrel4.FolderData")
Check Err.Number = 459, "Initialize with an object without events raises 459", Err.Number & " " & Err.Description
' The folder list is passed by reference (a script variable).
Set list = Nothing
Err.Clear
app.ReadItems list
Check Err.Number = 0, "ReadItems with Nothing reads nothing and raises nothing", Err.Number & " " & Err.Description
Check app.OutlookItems.Count = 0, "ReadItems with Nothing leaves no items", app.OutlookItems.Count
Err.Clear
app.SaveChanges
Check Err.Number = 0, "SaveChanges with nothing changed does nothing", Err.Number & " " & Err.Description

' Members that forward to the core, on a fresh object (the category model
' itself is tested by categories.vbs).
Dim cats, cats2, items
Err.Clear
value = app.BatchMode
Check Err.Number = 0 And value = False And VarType(value) = vbBoolean, "BatchMode is False at first", Err.Description
app.BatchMode = True
Check app.BatchMode = True, "BatchMode let True", app.BatchMode
app.BatchMode = False
Check app.BatchMode = False, "BatchMode let False", app.BatchMode
Set cats = app.Categories
Check Err.Number = 0 And IsObject(cats), "Categories is an object", Err.Description
value = TypeName(cats)
Check value = "Categories" Or value = "_Categories", "TypeName of Categories", value
Set cats2 = app.Categories
Check cats Is cats2, "Categories is the same object while held", ""
Check cats.Count = 0, "a fresh Categories is empty", cats.Count
Set items = app.OutlookItems
Check Err.Number = 0 And IsObject(items), "OutlookItems is an object", Err.Description
Check items.Count = 0, "a fresh OutlookItems is empty", items.Count
Check app.Changed = False, "Changed is False at first", app.Changed
Check app.UndoIsPossible = False, "UndoIsPossible is False at first", app.UndoIsPossible
Check app.RedoIsPossible = False, "RedoIsPossible is False at first", app.RedoIsPossible
Check app.RulesSupported = False, "RulesSupported is False without Outlook 2007", app.RulesSupported
Err.Clear
app.Undo
Check Err.Number = 0, "Undo with nothing to undo does nothing", Err.Description
app.Redo
Check Err.Number = 0, "Redo with nothing to redo does nothing", Err.Description
cats.Add "Work", True
Check app.Changed = True And app.UndoIsPossible = True, "an Add changes the Application and can be undone", ""
app.Undo
Check cats.Count = 0 And app.RedoIsPossible = True, "Undo takes the Add back", cats.Count

app1.Terminate
Check Err.Number = 0, "Terminate", Err.Description
Check app1.Categories Is Nothing, "Categories after Terminate is Nothing", ""
Check app1.OutlookItems Is Nothing, "OutlookItems after Terminate is Nothing", ""
Check app1.UndoIsPossible = False And app1.Changed = False, "getters after Terminate read False", ""
Err.Clear
app1.Undo
Check Err.Number = 91, "Undo after Terminate raises 91", Err.Number
Check Err.Source = "Tandrel4; Tandrel4.Application.Undo (0)", "its source names Application.Undo", Err.Source
Err.Clear
app1.Terminate
Check Err.Number = 0, "Terminate twice is harmless", Err.Description

' The object stays usable after errors.
Err.Clear
Check app.ToILanguage.LanguageID = 1031, "Application works after errors", Err.Description

Set lang = Nothing
Set lang2 = Nothing
Set other = Nothing
Set cats = Nothing
Set cats2 = Nothing
Set items = Nothing
Set app = Nothing
Set app1 = Nothing
Check Err.Number = 0, "objects released", Err.Description

Finish EXPECTED_CHECKS
