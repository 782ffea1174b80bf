#pragma once

namespace t4test {

// Application.ReadItems over the Outlook stand-in's test mailbox with a
// __Application sink advised, through the vtable as a C++ client calls it:
// Progress once per item of each folder read (1..n of n), bCancel passed by
// reference and not consulted, a sink that calls back into the library,
// and no progress for the junk folder.
void TestProgressEvents();

}  // namespace t4test
