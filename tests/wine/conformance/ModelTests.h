#pragma once

namespace t4test {

// How the COM layer reads a collection index (IndexOf, RoundHalfEven).
void TestIndexConversion();
// OutlookItems, OutlookItem, memberships, filters, their undo and redo and
// their events, through IDispatch on a model that holds items.
void TestItemsThroughDispatch();
// Part of the same, as VBScript hosted in this process sees it.
void TestItemsFromVBScript();

}  // namespace t4test
