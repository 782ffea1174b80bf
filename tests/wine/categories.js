// The category model from JScript: Categories and Category through the
// registered Application, errors as exceptions, Enumerator over the
// collection. Prints PASS/FAIL lines and a SUMMARY.
function names(collection) {
  var out = [];
  for (var e = new Enumerator(collection); !e.atEnd(); e.moveNext()) out.push(e.item().Name);
  return out.join(",");
}

try {
  var app = new ActiveXObject("Tandrel4.Application");
  var cats = app.Categories;
  var def = cats.Add("", false);
  var work = cats.Add("Work", true, "", 3, 4);
  var home = cats.Add("Home", false);
  check(def.ID === 0 && work.ID === 1 && home.ID === 2, "Add numbers the categories from 0",
        def.ID + " " + work.ID + " " + home.ID);
  check(work.Color === 3 && work.ShortCut === 4 && work.InMasterlist === true,
        "Add stores colour, shortcut and flag", work.Color + " " + work.ShortCut);
  check(home.Color === 0 && home.ShortCut === 0 && home.CategoryID === "",
        "left-out optional arguments count as empty text and 0", home.Color + " " + home.ShortCut);
  check(cats.Add("work", false) === work, "Add of an existing name returns it", "");
  check(cats.Count === 3 && cats.Count(true) === 3, "Count", cats.Count);

  check(cats.Item(2) === work && cats(2) === work, "by position, also as default member", "");
  check(cats.Item("1") === work && cats("2") === home, "by key", "");
  check(cats(2.5) === work && cats(3.5) === null, "positions round half to even", "");
  check(cats(0) === null && cats(4) === null && cats("7") === null && cats("x") === null,
        "a missing index gives null (Nothing)", "");
  check(cats(null) === null, "null (VT_NULL) gives null", "");
  check(cats.Item(2, true) === work, "Item with IgnoreFilter", "");
  var found = null;
  check(cats.NameExist("WORK", found) === true && cats.NameExist("nope") === false,
        "NameExist (JScript gets only the result)", "");

  // Renaming and the duplicate error.
  work.Name = "Office";
  check(work.Name === "Office", "rename", work.Name);
  work.Name = "office";
  check(work.Name === "office", "a rename of the letter case only is allowed", work.Name);
  var e = raised(function () { home.Name = "OFFICE"; });
  check(e !== null && hex(e.number) === "D080222A", "renaming to a taken name raises cmNameExist",
        e === null ? "nothing raised" : hex(e.number));
  check(e !== null && e.description ===
            "Der Name existiert bereits.\r\n\r\nBitte w\u00e4hlen Sie einen anderen Namen.",
        "cmNameExist description with its line breaks", e === null ? "" : e.description);
  check(home.Name === "Home", "a failed rename keeps the name", home.Name);

  // Colour, shortcut and undo.
  work.Color = 7;
  work.Color = 25;
  check(work.Color === 7 && app.UndoIsPossible, "Color 25 keeps the colour", work.Color);
  app.Undo();
  app.Undo();
  check(work.Color === 3, "two undos reach the colour Add gave", work.Color);
  app.Redo();
  check(work.Color === 7, "Redo", work.Color);
  work.ShortCut = 12;
  check(work.ShortCut === 4, "ShortCut 12 keeps the shortcut", work.ShortCut);
  work.ShortCut = 0;
  check(work.ShortCut === 0, "ShortCut 0 is stored", work.ShortCut);
  e = raised(function () { work.Color = "abc"; });
  // The type library's Invoke refuses the argument before the member runs:
  // DISP_E_TYPEMISMATCH, which VBScript shows as 13.
  check(e !== null && (hex(e.number) === "80020005" || hex(e.number) === "800A000D"),
        "a text that is no number is a type mismatch", e === null ? "nothing raised" : hex(e.number));
  check(work.Color === 7, "the refused value leaves the colour", work.Color);

  // Batch mode.
  app.BatchMode = true;
  work.Color = 1;
  home.Color = 2;
  cats.Add("Batch", true);
  app.BatchMode = false;
  app.Undo();
  check(work.Color === 7 && home.Color === 0 && !cats.NameExist("Batch"),
        "one Undo takes back the whole batch", work.Color + " " + home.Color);
  app.Redo();

  // Counters and filters.
  var a = 0, b = 0;
  check(raised(function () { cats.CountDetails(a, b); }) === null,
        "CountDetails accepts JScript variables", "");
  check(cats.CountWithoutDefault === 3 && cats.DefaultCategory === def,
        "CountWithoutDefault and DefaultCategory", cats.CountWithoutDefault);
  cats.SetFilter(0, -1, 0, 1);
  check(cats.Count === 2 && cats.Count(true) === 4, "SetFilter shows the master list categories",
        cats.Count);
  check(names(cats) === "office,Batch", "Enumerator follows the filter", names(cats));
  check(cats.FilterMasterlist === 1 && cats.FilterTypes === -1, "filter values read back", "");
  cats.SetFilter(0, -1, 0, 0);
  check(cats.Count === 4, "the filter removed", cats.Count);

  // Enumerator while deleting.
  var seen = [];
  for (var en = new Enumerator(cats); !en.atEnd(); en.moveNext()) {
    var c = en.item();
    seen.push(c.Name);
    if (c.Name === "office") cats.Delete(String(home.ID));
  }
  check(seen.join(",") === ",office,Home,Batch", "Enumerator walks the categories it started with",
        seen.join(","));
  check(cats.Count === 3 && !cats.NameExist("Home"), "the deletion took effect", cats.Count);
  cats.Delete("99");
  cats.Delete(null);
  check(cats.Count === 3, "Delete of an index that names nothing does nothing", cats.Count);
  var next = cats.Add("Next", true);
  check(next.ID === 4, "IDs are never reused", next.ID);
  app.Undo();
  app.Undo();
  check(cats.NameExist("Home") && !cats.NameExist("Next"), "undo of Add and of Delete", "");

  // Terminate with a category still held.
  app.Terminate();
  check(work.Name === "office", "after Terminate a held category is readable", work.Name);
  e = raised(function () { work.Color = 3; });
  check(e !== null && hex(e.number) === "800A005B", "after Terminate setting Color raises 91",
        e === null ? "nothing raised" : hex(e.number));
  check(app.Categories === null, "after Terminate Categories is null (Nothing)", "");
} catch (unexpected) {
  check(false, "no unexpected error", hex(unexpected.number) + " " + unexpected.description);
}

finish();
