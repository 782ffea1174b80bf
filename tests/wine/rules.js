// The rules component Tandrel4.CategoryRules from JScript: JScript hands
// Outlook's object over as VT_DISPATCH and texts by value, and sees errors
// as exceptions. Prints PASS/FAIL lines and a SUMMARY.
try {
  var ol = new ActiveXObject("Tandrel4Test.Outlook");
  ol.Reset();
  ol.Version = "12.0.4518";
  var olCats = ol.GetNamespace("MAPI").Categories;
  var rules = ol.GetNamespace("MAPI").DefaultStore.GetRules();
  olCats.Add("Green", 5, 0);
  var greenId = olCats.Item(1).CategoryID;

  var reader = new ActiveXObject("Tandrel4.CategoryRules");
  check(reader !== null && typeof reader === "object", "new ActiveXObject Tandrel4.CategoryRules", typeof reader);
  var list = reader.GetMasterlist(ol);
  check(list.ReadCategories() === greenId + ";Green;4;0", "ReadCategories maps Outlook's colour 5 to 4",
        list.ReadCategories());
  check(list.Format() === "", "Format is empty", list.Format());
  list.WriteCategories(";Yellow;-1;11");
  check(olCats.Count === 2 && olCats.Item(2).Name === "Yellow", "WriteCategories creates Yellow", olCats.Count);
  check(olCats.Item(2).Color === 0 && olCats.Item(2).ShortcutKey === 12,
        "no colour and shortcut 11 reach Outlook as 0 and 12",
        olCats.Item(2).Color + " " + olCats.Item(2).ShortcutKey);

  rules.AddTestRule("Plants", "Green", "Green;Yellow");
  var cr = reader.GetCategoryRules(ol);
  check(cr.Changed === false, "the rules are unchanged at first", cr.Changed);
  cr.RenameCategory("GREEN", "Olive");
  check(rules.RuleText(1) === "Olive|Olive;Yellow", "RenameCategory renames in every part", rules.RuleText(1));
  check(cr.Changed === true, "Changed after a rename", cr.Changed);
  cr.Save();
  check(rules.SaveCount === 1 && cr.Changed === false, "Save writes once and clears Changed", rules.SaveCount);

  var e = raised(function () { reader.GetMasterlist("Outlook"); });
  check(e !== null && hex(e.number) === "800A000D", "a text for Outlook raises 13",
        e === null ? "nothing raised" : hex(e.number));
  e = raised(function () { reader.GetCategoryRules(null); });
  check(e !== null && hex(e.number) === "800A000D", "null (no object in JScript) raises 13",
        e === null ? "nothing raised" : hex(e.number));
  e = raised(function () { reader.GetCategoryRules(); });
  check(e !== null, "GetCategoryRules without Outlook raises", "nothing raised");
  ol.Reset();
} catch (unexpected) {
  check(false, "no unexpected error", hex(unexpected.number) + " " + unexpected.description);
}

finish();
