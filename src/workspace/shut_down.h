#pragma once

namespace kx {

/// The program begins to unload: every wait ends at once and the box's port is closed. No question is asked.
void Begin_Shutdown();

}  // namespace kx
