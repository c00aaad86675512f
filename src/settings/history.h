#pragma once

#include "settings/image.h"
#include "settings/shown_text.h"

namespace kx {

constexpr int undo_slots = 101;

/// Slot at which the next capture is written, 0 to 100.
extern int Undo_Index;

/// Tells of a step into a slot that was never captured; empty after any other step or capture.
extern Shown_Text history_status;

/// Keeps the whole tune as it is now, before a change. Does nothing while Undo_Busy is set. When the store is
/// full the oldest state is lost.
void Capture_History();

/// The same for a gesture that is captured at its end: keeps @p before, the tune at its start.
void Capture_History_Of(const Byte_Image& before);

/// Goes one slot down and loads it. The state that is left is not stored: only captures store.
void Undo();

/// Goes one slot up and loads it, also past the newest capture, where slots hold older or zero images. Of an
/// image of zeros history_status tells how to go back.
void Redo();

/// Empties the store.
void Reset_History();

}  // namespace kx
