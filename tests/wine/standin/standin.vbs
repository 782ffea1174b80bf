' The Outlook stand-in (T4OutlookStandIn.dll) through late binding, the way
' Tandrel4 will use it: CreateObject, Version, the NameSpace's Categories,
' the rules of the default store and their category arrays, the MAPI
' session with the counters the Application keeps, and the MAPI library over
' the test mailbox. Prints PASS/FAIL lines and a SUMMARY.
Const EXPECTED_CHECKS = 132

' Wine's VBScript has no Join.
Function JoinArray(values)
  Dim i, text
  text = ""
  For i = LBound(values) To UBound(values)
    If i > LBound(values) Then text = text & ";"
    text = text & values(i)
  Next
  JoinArray = text
End Function

On Error Resume Next

Dim app, ns, ns2, cats, work, home, c, id, n, names, store, rules, rule, cond, act, arr, v
Dim session, session2, noEvents

Err.Clear
Set app = CreateObject("Tandrel4Test.Outlook")
Check Err.Number = 0 And IsObject(app), "CreateObject(""Tandrel4Test.Outlook"")", Err.Description
app.Reset
Check Err.Number = 0, "Reset", Err.Description

' --- Version ----------------------------------------------------------------
Check app.Version = "11.0.0.8312", "Version defaults to Outlook 2003", app.Version
Check app.Name = "Outlook", "Name", app.Name
For Each v In Array("8.5", "9.0", "10.0", "11.0", "12.0.4518", "14.0", "1")
  app.Version = v
  Check app.Version = v, "Version can be set to " & v, app.Version
Next
app.Version = 12
Check app.Version = "12" And VarType(app.Version) = vbString, "a number put into Version reads back as text", VarType(app.Version)
app.Version = "12.0.4518"

' --- NameSpace ----------------------------------------------------------------
Set ns = app.GetNamespace("MAPI")
Check Err.Number = 0 And IsObject(ns), "GetNamespace(""MAPI"")", Err.Description
Set ns2 = app.GetNamespace("mapi")
Check ns Is ns2, "GetNamespace hands out the same NameSpace", ""
Check app.Session Is ns, "Session is that NameSpace", ""
Check ns.Type = "MAPI", "NameSpace.Type", ns.Type
Err.Clear
Set ns2 = app.GetNamespace("OTHER")
Check Err.Number <> 0, "GetNamespace of another type fails", Err.Number
Err.Clear
Set cats = ns.Categories
Check Err.Number = 0 And IsObject(cats), "NameSpace.Categories", Err.Description
Check ns.Categories Is cats, "the same Categories object each time", ""
Check ns.Categories.Count = 0 And app.GetNamespace("MAPI").Categories.Count = 0, "chained calls", ""

' --- Categories -----------------------------------------------------------------
Check cats.Count = 0, "no categories after Reset", cats.Count
Set work = cats.Add("Work", 3, 4)
Check Err.Number = 0 And work.Name = "Work", "Add(Name, Color, ShortcutKey)", Err.Description
Check work.Color = 3 And work.ShortcutKey = 4, "Add stores colour and shortcut key", work.Color & " " & work.ShortcutKey
id = work.CategoryID
Check Len(id) = 38 And Left(id, 1) = "{" And Right(id, 1) = "}" And id = UCase(id), "CategoryID is a GUID in braces, upper case", id
Set home = cats.Add("Home")
Check home.Color = 0 And home.ShortcutKey = 0, "colour and shortcut key left out are none (0)", home.Color & " " & home.ShortcutKey
Check home.CategoryID <> id, "every category gets its own CategoryID", home.CategoryID
Set c = cats.Add("Mid", , 12)
Check Err.Number = 0 And c.Color = 0 And c.ShortcutKey = 12, "an argument left out in the middle", Err.Description
Set c = cats.Add("NoColour", -1)
Check Err.Number = 0 And c.Color = -1, "colour -1 (none in Outlook 2007)", c.Color
Check cats.Count = 4, "Count", cats.Count

Err.Clear
Set c = cats.Add("WORK")
Check Err.Number <> 0 And Err.Description <> "", "Add of an existing name (any case) raises an error with a description", Err.Number
Err.Clear
Set c = cats.Add("")
Check Err.Number <> 0, "Add of an empty name fails", Err.Number
Err.Clear
Set c = cats.Add("Bad", 26)
Check Err.Number <> 0, "Add with colour 26 fails", Err.Number
Err.Clear
Set c = cats.Add("Bad", 0, 1)
Check Err.Number <> 0, "Add with shortcut key 1 (Ctrl+F1) fails", Err.Number
Err.Clear
Set c = cats.Add("Bad", 0, 13)
Check Err.Number <> 0 And cats.Count = 4, "Add with shortcut key 13 fails and adds nothing", cats.Count
Err.Clear

Check cats.Item(1).Name = "Work" And cats.Item(2).Name = "Home", "Item by 1-based position", ""
Check cats(3).Name = "Mid", "Item is the default member", ""
Check ns.Categories(3).Name = "Mid" And ns.Categories("Mid").ShortcutKey = 12, "arguments to Categories go to its Item", ""
Check cats("home").Name = "Home" And cats.Item("WORK").CategoryID = id, "Item by name, any letter case", ""
n = 2
Check cats(n).Name = "Home", "Item with a position in a variable", ""
names = "Mid"
Check cats(names).ShortcutKey = 12, "Item with a name in a variable", ""
Check cats(CDbl(1)).Name = "Work" And cats(CByte(2)).Name = "Home", "Item with a Double or Byte position", ""
Err.Clear
Set c = cats(5)
Check Err.Number <> 0, "Item past the end fails", Err.Number
Err.Clear
Set c = cats.Item(5)
Check Err.Number = &H8002000B And Err.Description <> "", "Item past the end raises DISP_E_BADINDEX with a description", Hex(Err.Number)
Err.Clear
Set c = cats(0)
Check Err.Number <> 0, "Item(0) fails", Err.Number
Err.Clear
' Through the default member Wine's VBScript loses the error's description
' (it reports E_FAIL), so the description is checked through Item.
Set c = cats("nope")
Check Err.Number <> 0, "Item of an unknown name fails", Err.Number
Err.Clear
Set c = cats.Item("nope")
Check Err.Number = &H8004010F And Err.Description <> "" And Err.Source = "Tandrel4Test.Outlook", "Item of an unknown name raises Outlook's not-found error with a description", Hex(Err.Number)
Err.Clear
Set c = cats(id)
Check Err.Number <> 0, "Item does not look up a CategoryID", Err.Number
Err.Clear

names = ""
For Each c In cats
  names = names & c.Name & ","
Next
Check Err.Number = 0 And names = "Work,Home,Mid,NoColour,", "For Each over Categories", names

' Updating a category.
Set c = cats("Home")
c.Name = "House"
Check Err.Number = 0 And cats(2).Name = "House" And home.Name = "House", "Name can be changed; every object of the category sees it", home.Name
c.Name = "HOUSE"
Check Err.Number = 0 And home.Name = "HOUSE", "a change of letter case only", home.Name
c.Name = "work"
Check Err.Number <> 0 And home.Name = "HOUSE", "renaming to another category's name fails", home.Name
Err.Clear
c.Color = 25
c.ShortcutKey = 2
Check Err.Number = 0 And home.Color = 25 And home.ShortcutKey = 2, "Color and ShortcutKey can be changed", home.Color & " " & home.ShortcutKey
c.Color = 30
Check Err.Number <> 0 And home.Color = 25, "a colour outside -1..25 is refused", home.Color
Err.Clear
c.ShortcutKey = 1
Check Err.Number <> 0 And home.ShortcutKey = 2, "a shortcut key outside 0, 2..12 is refused", home.ShortcutKey
Err.Clear
c.ShortcutKey = 0
Check home.ShortcutKey = 0, "ShortcutKey back to none", home.ShortcutKey
c.CategoryID = "{00000000-0000-0000-0000-000000000000}"
Check Err.Number <> 0 And Left(c.CategoryID, 1) = "{" And c.CategoryID <> "{00000000-0000-0000-0000-000000000000}", "CategoryID is read-only", c.CategoryID
Err.Clear

' Removing by position, name and CategoryID.
cats.Remove "Mid"
Check Err.Number = 0 And cats.Count = 3, "Remove by name", Err.Description
cats.Remove id
Check Err.Number = 0 And cats.Count = 2 And cats(1).Name = "HOUSE", "Remove by CategoryID", Err.Description
Dim removedName
removedName = work.Name
Check Err.Number <> 0, "a removed category fails when used", Err.Number
Err.Clear
cats.Remove 2
Check Err.Number = 0 And cats.Count = 1 And cats(1).Name = "HOUSE", "Remove by position", Err.Description
cats.Remove "nope"
Check Err.Number <> 0 And cats.Count = 1, "Remove of an unknown name fails", Err.Number
Err.Clear
cats.Remove 7
Check Err.Number <> 0 And cats.Count = 1, "Remove past the end fails", Err.Number
Err.Clear

' --- Rules ------------------------------------------------------------------------
Set store = ns.DefaultStore
Check Err.Number = 0 And IsObject(store), "NameSpace.DefaultStore", Err.Description
Set rules = store.GetRules()
Check Err.Number = 0 And IsObject(rules), "Store.GetRules()", Err.Description
Check store.GetRules() Is rules, "GetRules hands out the same Rules", ""
Check rules.Count = 0 And rules.SaveCount = 0, "no rules and no save after Reset", rules.Count & " " & rules.SaveCount
Set rule = rules.AddTestRule("Sort", "Work;Home", "Filed")
Check Err.Number = 0 And rule.Name = "Sort", "AddTestRule", Err.Description
rules.AddTestRule "OnlyAssign", "", "Later"
rules.AddTestRule "OnlyCondition", "Urgent", ""
Check rules.Count = 3, "Rules.Count", rules.Count
Check rules.RuleText(1) = "Work;Home|Filed", "RuleText(1)", rules.RuleText(1)
Check rules.RuleText(2) = "|Later" And rules.RuleText(3) = "Urgent|", "RuleText with a part disabled", rules.RuleText(2) & " " & rules.RuleText(3)
Check rules(2).Name = "OnlyAssign" And rules.Item(3).Name = "OnlyCondition", "Rules.Item, the default member", ""
Check rules("sort").Name = "Sort", "Rules.Item by name", ""
Err.Clear
Set rule = rules(4)
Check Err.Number <> 0, "Rules.Item past the end fails", Err.Number
Err.Clear

Set rule = rules(1)
Check rule.Enabled = True, "a rule is enabled", rule.Enabled
Set cond = rule.Conditions.Category
Set act = rule.Actions.AssignToCategory
Check Err.Number = 0 And IsObject(cond) And IsObject(act), "Conditions.Category and Actions.AssignToCategory", Err.Description
Check cond.ConditionType = 18 And act.ActionType = 2, "ConditionType olConditionCategory, ActionType olRuleActionAssignToCategory", ""
Check cond.Enabled = True And act.Enabled = True, "both parts enabled", ""
arr = cond.Categories
Check VarType(arr) = vbArray + vbVariant, "Categories reads as an array of Variants", VarType(arr)
Check LBound(arr) = 0 And UBound(arr) = 1 And arr(0) = "Work" And arr(1) = "Home", "the condition's categories", JoinArray(arr)
Check VarType(arr(0)) = vbString, "each element is text", VarType(arr(0))
Check JoinArray(act.Categories) = "Filed", "the action's categories", JoinArray(act.Categories)
Check JoinArray(rules(2).Conditions.Category.Categories) = "" And UBound(rules(2).Conditions.Category.Categories) = -1, "a disabled part reads an empty array", ""
Check rules(2).Conditions.Category.Enabled = False And rules(3).Actions.AssignToCategory.Enabled = False, "the parts AddTestRule left empty are disabled", ""

cond.Categories = Array("A", "B", "C")
Check Err.Number = 0 And JoinArray(cond.Categories) = "A;B;C", "Categories can be set from Array()", Err.Description
Check rules.RuleText(1) = "A;B;C|Filed", "RuleText sees the change", rules.RuleText(1)
arr = Array("X")
act.Categories = arr
Check Err.Number = 0 And rules.RuleText(1) = "A;B;C|X", "Categories from a variable", rules.RuleText(1)
ReDim arr(1)
arr(0) = "P"
arr(1) = "Q"
rule.Actions.AssignToCategory.Categories = arr
Check rules.RuleText(1) = "A;B;C|P;Q", "Categories from a ReDim'ed array, through a fresh chain", rules.RuleText(1)
cond.Categories = Array()
Check Err.Number = 0 And rules.RuleText(1) = "|P;Q" And UBound(cond.Categories) = -1, "an empty array", rules.RuleText(1)
cond.Categories = Array("A")
cond.Categories = "A;B"
Check Err.Number <> 0 And JoinArray(cond.Categories) = "A", "a plain text is not an array", Err.Number
Err.Clear
cond.Enabled = False
Check cond.Enabled = False And rules.RuleText(1) = "|P;Q", "Enabled can be switched off", rules.RuleText(1)
Check JoinArray(cond.Categories) = "A", "a disabled part keeps its categories", JoinArray(cond.Categories)
cond.Enabled = True
Check rules.RuleText(1) = "A|P;Q", "and on again", rules.RuleText(1)
rule.Enabled = False
Check rules(1).Enabled = False, "Rule.Enabled can be switched off", ""
rule.Name = "Renamed"
Check rules(1).Name = "Renamed", "Rule.Name can be changed", rules(1).Name

rules.Save
Check rules.SaveCount = 1, "Save counts", rules.SaveCount
rules.Save False
rules.Save(True)
Check rules.SaveCount = 3, "Save with ShowProgress counts", rules.SaveCount

' --- The MAPI session ------------------------------------------------------------
Check app.SessionsCreated = 0 And app.LogonCount = 0 And app.LogoffCount = 0 And app.LastLogonArgs = "", "no session after Reset", ""
Set session = CreateObject("dimdo.dimdosession")
Check Err.Number = 0 And IsObject(session), "CreateObject(""dimdo.dimdosession"")", Err.Description
Check app.SessionsCreated = 1, "SessionsCreated", app.SessionsCreated
Check session.LoggedOn = False, "not logged on at first", session.LoggedOn
session.Logon , , , False, , True
Check Err.Number = 0 And session.LoggedOn = True, "Logon", Err.Description
Check app.LogonCount = 1, "LogonCount", app.LogonCount
Check app.LastLogonArgs = "profile=missing;password=missing;dialog=missing;newsession=False;parent=missing;nomail=True", "LastLogonArgs names what was left out", app.LastLogonArgs
session.Logon "Outlook", "", False, True, 0
Check app.LastLogonArgs = "profile=Outlook;password=;dialog=False;newsession=True;parent=0;nomail=missing", "LastLogonArgs with values", app.LastLogonArgs
session.Logon
Check app.LogonCount = 3 And app.LastLogonArgs = "profile=missing;password=missing;dialog=missing;newsession=missing;parent=missing;nomail=missing", "Logon without arguments", app.LastLogonArgs
session.Logoff
Check Err.Number = 0 And session.LoggedOn = False And app.LogoffCount = 1, "Logoff", Err.Description
Set session2 = CreateObject("dimdo.dimdosession")
Check app.SessionsCreated = 2 And session2.LoggedOn = False, "a second session counts", app.SessionsCreated
Set session2 = Nothing
Set session = Nothing

' --- Reset and the Application without events ---------------------------------------
Set c = cats(1)
app.Reset
Check cats.Count = 0 And rules.Count = 0 And rules.SaveCount = 0, "Reset clears categories, rules and SaveCount", cats.Count & " " & rules.Count
Check app.SessionsCreated = 0 And app.LogonCount = 0 And app.LogoffCount = 0 And app.LastLogonArgs = "", "Reset clears the session counters", ""
removedName = c.Name
Check Err.Number <> 0, "a category from before Reset is gone", Err.Number
Err.Clear
Check app.Version = "12.0.4518", "Reset keeps Version", app.Version
Check app.SinkCount = 0, "SinkCount without sinks", app.SinkCount
app.FireQuit
Check Err.Number = 0, "FireQuit without sinks", Err.Description

Set noEvents = CreateObject("Tandrel4Test.OutlookNoEvents")
Check Err.Number = 0 And noEvents.Version = "11.0.0.8312", "CreateObject(""Tandrel4Test.OutlookNoEvents"")", Err.Description
Check noEvents.GetNamespace("MAPI").Categories.Count = 0, "it shares the process's categories", ""
cats.Add "Shared"
Check noEvents.GetNamespace("MAPI").Categories(1).Name = "Shared", "a category added through one Application shows in the other", ""
app.Reset

' --- The MAPI library over the test mailbox ----------------------------------------
Dim fso, mbx, msession, mfolder, mstore, mitem, mmessage
Set fso = CreateObject("Scripting.FileSystemObject")
app.LoadMailbox fso.GetAbsolutePathName("mailbox.txt")
Check Err.Number = 0, "LoadMailbox", Err.Description
Set msession = CreateObject("dimdo.dimdosession")
Set mfolder = msession.GetFolderFromID("0000f003", "0000AA01")
Check mfolder.Name = "Projects" And mfolder.StoreID = "0000AA01", "GetFolderFromID with the store", mfolder.Name
Check msession.GetFolderFromID("0000F001").Items.Count = 3, "GetFolderFromID without the store, Items.Count", ""
Check mfolder.Session Is msession, "a folder's Session is the session that opened it", ""
Err.Clear
Set mbx = msession.GetFolderFromID("0000FFFF")
Check Err.Number <> 0, "an unknown folder raises", Err.Number
Err.Clear
Set mstore = msession.GetStoreFromID("0000AA02")
Check mstore.Name = "Archive" And mstore.GetDefaultFolder(6).Name = "Old mail", "GetStoreFromID and the Inbox", mstore.Name
Check mstore.GetDefaultFolder(3) Is Nothing, "a default folder the store lacks is Nothing", ""
Check msession.CompareEntryIDs("0000aa01", "0000AA01") And Not msession.CompareEntryIDs("0000AA01", "0000AA02"), "CompareEntryIDs", ""
Set mmessage = mstore.GetMessageFromID("0000E101")
mmessage.Categories = "Work;Old"
Check mmessage.Categories = "Work;Old", "a message's Categories", mmessage.Categories
mmessage.Save
Check app.MailboxSaveCount = 1, "Save counts", app.MailboxSaveCount
Set mitem = app.GetNamespace("MAPI").GetItemFromID("0000E101", "0000AA02")
Check mitem.Subject = "Old one" And mitem.Categories = "Work, Old" And mitem.Class = 43, "GetItemFromID hands out the item with its saved categories", mitem.Categories
Err.Clear
n = CreateObject("dimdo.sfTable").RowCount
Check Err.Number <> 0, "a table without an item refuses RowCount", Err.Number
Err.Clear
Check app.OpenTables = 0, "no table holds a raw table", app.OpenTables
Check Not CreateObject("dimdo.sfUtils") Is Nothing, "CreateObject(""dimdo.sfUtils"")", Err.Description
' The prefix's time zone: local and universal time differ by whole quarter
' hours at most, and the answer is a date.
Dim localNow, gmt, offset
localNow = Now
gmt = CreateObject("dimdo.sfUtils").HrLocalToGMT(localNow)
Check Err.Number = 0 And VarType(gmt) = 7, "HrLocalToGMT answers a date", Err.Number & " " & VarType(gmt)
Err.Clear
offset = Round((CDbl(localNow) - CDbl(gmt)) * 24 * 60)
Check Err.Number = 0 And Abs(offset) <= 14 * 60 And (offset Mod 15) = 0, "HrLocalToGMT moves by the time zone's offset", offset & " " & Err.Description
Set mitem = Nothing
Set mmessage = Nothing
Set mstore = Nothing
Set mfolder = Nothing
Set msession = Nothing
app.Reset

Finish EXPECTED_CHECKS
