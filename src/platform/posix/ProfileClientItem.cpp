#include "platform/posix/ProfileClientItem.h"
