// Reading Outlook's items with Application.ReadItems from JScript, over the
// stand-in's test mailbox (mailbox.txt): the folder list as a JScript array
// (also with a hole), errors as exceptions (13 for an entry that is no
// FolderData), and GetOutlookItem. Prints PASS/FAIL lines and a SUMMARY.
var fso = new ActiveXObject("Scripting.FileSystemObject");
var here = fso.GetAbsolutePathName(".");
var saved = here + "\\saved-js";
if (fso.FolderExists(saved)) fso.DeleteFolder(saved, true);
fso.CreateFolder(saved);

var ol = new ActiveXObject("Tandrel4Test.Outlook");
ol.Reset();
ol.Version = "11.0.0.8312";
ol.LoadMailbox(here + "\\mailbox.txt", saved);

function newFolder(entryId, storeId, name, count) {
  var f = new ActiveXObject("Tandrel4.FolderData");
  f.Init(entryId, storeId, name, count, false);
  return f;
}

function itemBySubject(app, subject) {
  for (var e = new Enumerator(app.OutlookItems); !e.atEnd(); e.moveNext()) {
    if (e.item().Subject == subject) return e.item();
  }
  return null;
}

var app = new ActiveXObject("Tandrel4.Application");
app.Initialize(ol);

var inbox = newFolder("0000F001", "0000AA01", "Inbox", 3);
var projects = newFolder("0000F003", "0000AA01", "Projects", 2);
var error = raised(function () { app.ReadItems([inbox, projects]); });
check(error === null, "ReadItems with a JScript array", error && error.message);
check(app.OutlookItems.Count == 5, "the items of both folders are read", app.OutlookItems.Count);

// A hole in the array is an empty entry.
var holes = [];
holes[0] = projects;
holes[2] = inbox;
error = raised(function () { app.ReadItems(holes); });
check(error === null && app.OutlookItems.Count == 5, "an array with a hole",
      (error && error.message) + " " + app.OutlookItems.Count);

var item = itemBySubject(app, "Plan");
check(item !== null && item.CategoriesString() == "Project A", "an item and its category",
      item && item.CategoriesString());
var outlookItem = null;
error = raised(function () { outlookItem = item.GetOutlookItem(); });
check(error === null && outlookItem.EntryID == "0000E006", "GetOutlookItem hands out Outlook's item",
      error ? error.message : outlookItem.EntryID);

error = raised(function () { app.ReadItems([inbox, "Inbox"]); });
check(error !== null && hex(error.number) == "800A000D", "a text entry raises 13",
      error && hex(error.number));
error = raised(function () { app.ReadItems([inbox, ol]); });
check(error !== null && hex(error.number) == "800A000D", "an object that is no FolderData raises 13",
      error && hex(error.number));
error = raised(function () { app.ReadItems(null); });
check(error === null && app.OutlookItems.Count == 0, "ReadItems with null reads nothing",
      (error && error.message) + " " + app.OutlookItems.Count);

app.Terminate();
check(ol.OpenTables == 0, "every table let go of its raw table", ol.OpenTables);
finish();
