#pragma once

namespace kx {

constexpr int undo_slots = 101;

/// Slot at which the next capture is written, 0 to 100.
extern int Undo_Index;

/// Keeps the whole tune as it is now, before a change. Does nothing while Undo_Busy is set. When the store is
/// full the oldest state is lost.
void Capture_History();

/// Goes one slot down and loads it. The state that is left is not stored: only captures store.
void Undo();

/// Goes one slot up and loads it, also past the newest capture, where slots hold older or zero images.
void Redo();

/// Empties the store.
void Reset_History();

}  // namespace kx
