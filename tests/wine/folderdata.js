// Tandrel4.FolderData from JScript: Init and the getters, with exact
// UTF-16 checks of non-ASCII text. Prints PASS/FAIL lines and a SUMMARY.
try {
  var f = new ActiveXObject("Tandrel4.FolderData");
  check(f !== null, "new ActiveXObject Tandrel4.FolderData", "");
  var f1 = new ActiveXObject("Tandrel4.FolderData.1");
  check(f1 !== null, "new ActiveXObject Tandrel4.FolderData.1", "");

  check(f.EntryID === "" && f.StoreID === "" && f.Name === "", "fresh texts are empty", f.EntryID);
  check(f.ItemsCount === 0, "fresh ItemsCount is 0", f.ItemsCount);
  check(f.HasChilds === false, "fresh HasChilds is false", f.HasChilds);

  // "Bitte w\u00e4hlen Sie" and more, written as escapes so that the file's code
  // page does not matter.
  var name = "Bitte w\u00e4hlen Sie \u00c4\u00d6\u00dc\u00df \u20ac \ud83d\ude00";
  f.Init("00000000ABCDEF", "0000000038A1BB10", name, 12, true);
  check(f.Name === name, "Name round trip", f.Name);
  check(f.Name.length === name.length, "Name keeps its length in UTF-16 units", f.Name.length);
  check(f.Name.charCodeAt(7) === 0xe4, "U+00E4 arrives unchanged", f.Name.charCodeAt(7));
  check(f.Name.charCodeAt(f.Name.length - 2) === 0xd83d, "a surrogate pair arrives unchanged", "");
  check(f.EntryID === "00000000ABCDEF", "EntryID round trip", f.EntryID);
  check(f.StoreID === "0000000038A1BB10", "StoreID round trip", f.StoreID);
  check(f.ItemsCount === 12, "ItemsCount round trip", f.ItemsCount);
  check(f.HasChilds === true, "HasChilds round trip", f.HasChilds);

  var entry = "";
  for (var i = 0; i < 1024; i++) entry += "00FF";
  f.Init(entry, "", "", 0, false);
  check(f.EntryID === entry && f.EntryID.length === 4096, "long EntryID round trip", f.EntryID.length);
  check(f.StoreID === "" && f.Name === "" && f.HasChilds === false, "Init replaces every value", "");

  f.Init("E", "S", "N", "33", 0);
  check(f.ItemsCount === 33 && f.HasChilds === false, "Init converts its arguments", f.ItemsCount);

  var error = null;
  try {
    f.Init("only one");
  } catch (e) {
    error = e;
  }
  check(error !== null, "Init with one argument raises", "nothing raised");
  check(f.EntryID === "E", "a failed Init changes nothing", f.EntryID);

  var lang = f.ToILanguage();
  check(lang.LanguageID === 1031, "LanguageID reads 1031", lang.LanguageID);
  check(lang.SupportedLanguages === null, "SupportedLanguages is null (Nothing)", "");
} catch (unexpected) {
  check(false, "no unexpected error", hex(unexpected.number) + " " + unexpected.description);
}

finish();
