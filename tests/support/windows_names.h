#pragma once

#include <direct.h>
#include <io.h>

/// The one name of the test support that Windows lacks; included before each test there.
inline char* mkdtemp(char* name) { return _mktemp(name) != nullptr && _mkdir(name) == 0 ? name : nullptr; }
