// Tandrel4.Application from JScript: creation, the language view and the
// errors of members not built yet. Prints PASS/FAIL lines and a SUMMARY.
var passed = 0, failed = 0;

function check(ok, name, detail) {
  if (ok) {
    passed++;
    WScript.Echo("PASS " + name);
  } else {
    failed++;
    WScript.Echo("FAIL " + name + ": " + detail);
  }
}

// Runs fn and returns the error it raised (null when it raised none).
function raised(fn) {
  try {
    fn();
  } catch (e) {
    return e;
  }
  return null;
}

// JScript reports HRESULTs as signed numbers; compare them unsigned.
function hex(n) {
  return (n >>> 0).toString(16).toUpperCase();
}

function checkPending(name, member, fn) {
  var e = raised(fn);
  check(e !== null && hex(e.number) === "80004001", name + " raises E_NOTIMPL",
        e === null ? "nothing raised" : hex(e.number));
  check(e !== null && e.description === "Not implemented yet: " + member,
        name + " description names the member", e === null ? "" : e.description);
}

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

  e = raised(function () { app.ReadMasterlist(); });
  check(e !== null && hex(e.number) === "80004001", "ReadMasterlist raises E_NOTIMPL",
        e === null ? "nothing raised" : hex(e.number));
  check(e !== null && e.description.indexOf("Not implemented yet") === 0,
        "description starts Not implemented yet", e === null ? "" : e.description);
  check(e !== null && e.message === e.description, "message equals description", e === null ? "" : e.message);

  checkPending("BatchMode get", "Application.BatchMode", function () { return app.BatchMode; });
  checkPending("BatchMode put", "Application.BatchMode", function () { app.BatchMode = true; });
  checkPending("Categories", "Application.Categories", function () { return app.Categories; });
  checkPending("Changed", "Application.Changed", function () { return app.Changed; });
  // An object parameter: JScript's null is no object (VT_NULL), so hand in one.
  checkPending("Initialize", "Application.Initialize", function () { app.Initialize(app1); });
  checkPending("OutlookItems", "Application.OutlookItems", function () { return app.OutlookItems; });
  checkPending("ReadItems", "Application.ReadItems", function () { app.ReadItems(null); });
  checkPending("Redo", "Application.Redo", function () { app.Redo(); });
  checkPending("RedoIsPossible", "Application.RedoIsPossible", function () { return app.RedoIsPossible; });
  checkPending("RulesSupported", "Application.RulesSupported", function () { return app.RulesSupported; });
  checkPending("SaveChanges", "Application.SaveChanges", function () { app.SaveChanges(); });
  checkPending("Terminate", "Application.Terminate", function () { app.Terminate(); });
  checkPending("Undo", "Application.Undo", function () { app.Undo(); });
  checkPending("UndoIsPossible", "Application.UndoIsPossible", function () { return app.UndoIsPossible; });

  check(app.ToILanguage().LanguageID === 1031, "Application works after errors", "");
} catch (unexpected) {
  check(false, "no unexpected error", hex(unexpected.number) + " " + unexpected.description);
}

WScript.Echo("SUMMARY passed=" + passed + " failed=" + failed);
