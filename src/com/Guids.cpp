// The IIDs, CLSIDs and the LIBID of the type library, defined once from
// the identifiers file widl generates.
#include "com/Tandrel4_i.c"
