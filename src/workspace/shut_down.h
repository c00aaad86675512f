#pragma once

namespace kx {

/// The program begins to unload: every wait ends at once, the box's port is closed, and the tune goes among
/// the earlier ones. No question is asked.
void Begin_Shutdown();

}  // namespace kx
