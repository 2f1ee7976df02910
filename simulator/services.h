// The platform's functions as this library defines them: exported, whatever the build hides by default.
#pragma once

#pragma GCC visibility push(default)
#include "platform/services.h"
#pragma GCC visibility pop
