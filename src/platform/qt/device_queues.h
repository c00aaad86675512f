#pragma once

namespace kx::platform {

/// Characters that have arrived at the open device @p descriptor and were not taken yet.
[[nodiscard]] int Waiting_In_Device(int descriptor);

/// Returns when all that was handed to the open device @p descriptor has gone out, within a tenth of a
/// second. What a device that hangs has not taken by then is dropped.
void Let_Out(int descriptor);

}  // namespace kx::platform
