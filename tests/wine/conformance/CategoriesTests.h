#pragma once

namespace t4test {

// The Categories members still to come answer E_NOTIMPL with their name.
void TestPendingMembers();

// The __Categories events through the connection point, as a C++ host (or
// VB's WithEvents) receives them: each edit's event, FireItemEvents, a sink
// that calls back into the model, two sinks, EnumConnections, Unadvise, and
// the sinks released with the collection.
void TestCategoriesEvents();

}  // namespace t4test
