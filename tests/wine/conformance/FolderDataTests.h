#pragma once

namespace t4test {

// Two FolderData objects are two identities; one answers the same IUnknown
// from each of its interfaces.
void TestFolderDataIdentity();

// FolderData's members through the vtable: Init and the getters, long and
// non-ASCII texts, null strings, and the _ILanguage view.
void TestFolderData();

}  // namespace t4test
