#pragma once

namespace t4test {

// The type library as registered: interfaces, member order, dispatch ids,
// parameters, enums, events and classes.
void TestTypeLibrary();

}  // namespace t4test
