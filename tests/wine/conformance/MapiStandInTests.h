#pragma once

namespace t4test {

// The late-bound MAPI adapters of the Windows port over the Outlook
// stand-in's MAPI library and test mailbox (mailbox.txt next to the
// program), in the order item reading and saving use them.
void TestMapiAdaptersOverTheStandIn();

}  // namespace t4test
