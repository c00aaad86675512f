#pragma once

#include "platform/shared_library.h"

/// How the makers' libraries are called on a system that has more ways than one.
#ifdef _WIN32
#define KX_LIBRARY_CALL __stdcall
#else
#define KX_LIBRARY_CALL
#endif

namespace kx::platform {

/// The function @p name of @p library, of the type @p Function; null when it is not there.
template <typename Function>
Function* Entry_Of(Shared_Library& library, const char* name) {
  return reinterpret_cast<Function*>(library.Entry(name));
}

}  // namespace kx::platform
