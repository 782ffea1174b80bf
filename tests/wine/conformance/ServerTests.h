#pragma once

namespace t4test {

// Creation of the registered classes by CLSID and ProgID, the noncreatable
// ones refused, and aggregation refused.
void TestCreation();

// The DLL as a module: its exports, DllCanUnloadNow with objects, class
// objects and locks, DllGetClassObject, the message table and the version
// resource.
void TestModule();

}  // namespace t4test
