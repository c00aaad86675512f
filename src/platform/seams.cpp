#include "platform/seams.h"

namespace kx::platform {

Seams seams;

}  // namespace kx::platform
