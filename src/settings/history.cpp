#include "settings/history.h"

#include <algorithm>
#include <array>

#include "settings/image.h"
#include "settings/refresh.h"

namespace kx {

int Undo_Index = 0;
Shown_Text history_status;

namespace {

std::array<Byte_Image, undo_slots> undo_store;

constexpr int last_slot = undo_slots - 1;
constexpr const char* empty_step = "Empty history step: all bytes 0. Ctrl+Z goes back.";

Byte_Image& Slot() { return undo_store.at(static_cast<std::size_t>(Undo_Index)); }

void Load_Slot() {
  history_status.Set(Slot() == Byte_Image{} ? empty_step : "");
  const Undo_Busy_Scope loading;
  CardByte = Slot();
  Refresh_Whole_Image();
}

}  // namespace

void Capture_History() { Capture_History_Of(CardByte); }

void Capture_History_Of(const Byte_Image& before) {
  if (Undo_Busy) return;
  history_status.Set("");
  Slot() = before;
  ++Undo_Index;
  if (Undo_Index <= last_slot) return;
  Undo_Index = last_slot;
  std::shift_left(undo_store.begin(), undo_store.end(), 1);
}

void Undo() {
  if (Undo_Index < 1) return;
  --Undo_Index;
  Load_Slot();
}

void Redo() {
  if (Undo_Index >= last_slot) return;
  ++Undo_Index;
  Load_Slot();
}

void Reset_History() {
  undo_store = {};
  Undo_Index = 0;
  history_status.Set("");
}

}  // namespace kx
