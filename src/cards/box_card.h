#pragma once

#include "settings/image.h"

/// The card path over the socket of the KX-box. Its outcome shows in kx_crw_text. The box acknowledges each
/// byte of a card but cannot be asked for what the card holds.
namespace kx {

/// The tune as it goes to the card; byte 0 is not sent, the card keeps its own.
extern Byte_Image Card_Send_Buffer;

/// "Write to card in box": writes the tune byte by byte. A byte without an acknowledgement is a failure; the
/// next ones are sent all the same. The port is closed behind it.
void Command4_Click();

/// "Check if card present". The port stays open.
void Command5_Click();

/// "Read Card": reads the tune out of the box by the timer-driven engine, and waits for its end.
void Command6_Click();

void Reset_Box_Card();

}  // namespace kx
