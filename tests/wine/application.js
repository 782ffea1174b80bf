// Tandrel4.Application from JScript: creation, the language view, the
// members that forward to the core, binding and reading without Outlook.
// Prints PASS/FAIL lines and a SUMMARY.
try {
  var app = new ActiveXObject("Tandrel4.Application");
  check(typeof app === "object" && app !== null, "new ActiveXObject Tandrel4.Application", typeof app);
  var app1 = new ActiveXObject("Tandrel4.Application.1");
  check(app1 !== null, "new ActiveXObject Tandrel4.Application.1", "");

  var lang = app.ToILanguage();
  check(lang !== null, "ToILanguage", "");
  check(lang.LanguageID === 1031, "LanguageID reads 1031 at first", lang.LanguageID);
  lang.LanguageID = 1033;
  check(lang.LanguageID === 1033, "LanguageID accepts 1033", lang.LanguageID);
  lang.LanguageID = 1036;
  check(lang.LanguageID === 1031, "LanguageID 1036 stores 1031", lang.LanguageID);
  lang.LanguageID = 0;
  check(lang.LanguageID === 1031, "LanguageID 0 stores 1031", lang.LanguageID);
  lang.LanguageID = 1033;
  check(app1.ToILanguage().LanguageID === 1033, "LanguageID is process-wide", app1.ToILanguage().LanguageID);
  lang.LanguageID = 1031;
  check(lang.SupportedLanguages === null, "SupportedLanguages is null (Nothing)", lang.SupportedLanguages);

  var e = raised(function () { app.NoSuchMember(); });
  check(e !== null, "calling an unknown member raises", "nothing raised");

  // Without Outlook there is no master list to read.
  e = raised(function () { app.ReadMasterlist(); });
  check(e !== null && hex(e.number) === "800A005B", "ReadMasterlist without Outlook raises 91",
        e === null ? "nothing raised" : hex(e.number));
  check(e !== null && e.description === "Object variable or With block variable not set",
        "its description", e === null ? "" : e.description);
  check(e !== null && e.message === e.description, "message equals description", e === null ? "" : e.message);

  // An object parameter: JScript's null is no object (VT_NULL), so hand in
  // one; a FolderData offers no events to follow, so it is no Outlook.
  e = raised(function () { app.Initialize(new ActiveXObject("Tandrel4.FolderData")); });
  check(e !== null && hex(e.number) === "800A01CB", "Initialize with an object without events raises 459",
        e === null ? "nothing raised" : hex(e.number));
  e = raised(function () { app.ReadItems(null); });
  check(e === null, "ReadItems with null reads nothing and raises nothing", e === null ? "" : e.description);
  check(app.OutlookItems.Count === 0, "ReadItems with null leaves no items", app.OutlookItems.Count);
  check(raised(function () { app.SaveChanges(); }) === null, "SaveChanges with nothing changed does nothing", "");

  // Members that forward to the core (the category model itself is tested
  // by categories.js).
  check(app.BatchMode === false, "BatchMode is false at first", app.BatchMode);
  app.BatchMode = true;
  check(app.BatchMode === true, "BatchMode put true", app.BatchMode);
  app.BatchMode = false;
  var cats = app.Categories;
  check(cats !== null && typeof cats === "object", "Categories is an object", typeof cats);
  check(cats.Count() === 0, "a fresh Categories is empty", cats.Count());
  check(app.OutlookItems.Count === 0, "a fresh OutlookItems is empty", app.OutlookItems.Count);
  check(app.Changed === false && app.UndoIsPossible === false && app.RedoIsPossible === false,
        "Changed, UndoIsPossible and RedoIsPossible are false at first", "");
  check(app.RulesSupported === false, "RulesSupported is false without Outlook 2007", app.RulesSupported);
  check(raised(function () { app.Undo(); app.Redo(); }) === null,
        "Undo and Redo with an empty journal do nothing", "");
  cats.Add("Work", true);
  check(app.Changed === true && app.UndoIsPossible === true, "an Add can be undone", "");
  app.Undo();
  check(cats.Count() === 0 && app.RedoIsPossible === true, "Undo takes the Add back", cats.Count());
  app.Redo();
  check(cats.Count() === 1, "Redo adds it again", cats.Count());
  app1.Terminate();
  check(app1.Categories === null, "Categories after Terminate is null (Nothing)", app1.Categories);
  e = raised(function () { app1.Undo(); });
  check(e !== null && hex(e.number) === "800A005B", "Undo after Terminate raises 91",
        e === null ? "nothing raised" : hex(e.number));

  check(app.ToILanguage().LanguageID === 1031, "Application works after errors", "");
} catch (unexpected) {
  check(false, "no unexpected error", hex(unexpected.number) + " " + unexpected.description);
}

finish();
