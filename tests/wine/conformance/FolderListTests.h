#pragma once

namespace t4test {

// The folder lists a host hands to Application.ReadItems, as the COM layer
// reads them: arrays of any lower bound (also by reference), dictionaries,
// empty entries, and entries that are no FolderData.
void TestHostFolderLists();

}  // namespace t4test
