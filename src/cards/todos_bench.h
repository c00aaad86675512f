#pragma once

/// What the bench form does besides moving the tune: PIN, protect bits, pages. Each is one card operation.
namespace kx {

/// "Verify PIN": presents the PIN of the fields. Each wrong one costs the card a try, so that a field which
/// is no byte is refused before the card is asked.
void ComChp_Click();

/// "Change PIN": presents the PIN and gives the card the new one.
void change_Click();

/// Reads the protect bit at MemAddress: 0 is protected for good.
void ReadPB_Click();

/// Protects the byte at MemAddress for good, when it is the one in MemStatus.
void WritePB_Click();

/// Writes the first writelength characters of WriteData, Latin-1, from TWAdd on.
void Pagewrite_Click();

}  // namespace kx
