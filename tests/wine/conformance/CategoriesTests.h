#pragma once

namespace t4test {

// ImportMasterlist seen by a C++ host: ItemChange and ItemAdd through the
// connection point, batch mode off afterwards, one Undo for the import.
void TestImportEvents();

// The __Categories events through the connection point, as a C++ host (or
// VB's WithEvents) receives them: each edit's event, FireItemEvents, a sink
// that calls back into the model, two sinks, EnumConnections, Unadvise, and
// the sinks released with the collection.
void TestCategoriesEvents();

}  // namespace t4test
