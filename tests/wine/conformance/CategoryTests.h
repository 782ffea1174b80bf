#pragma once

namespace t4test {

// Errors of a Category through the vtable (cmNameExist with its IErrorInfo),
// and categories the host still holds after Application.Terminate (readable,
// not editable: error 91), all released to 0 afterwards.
void TestErrorsAndTerminate();

}  // namespace t4test
