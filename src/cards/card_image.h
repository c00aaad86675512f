#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "settings/image.h"
#include "settings/shown_text.h"

/// What all card paths do alike with the tune on its way to a card and from it.
namespace kx {

/// What a tune of a card is said to come from.
inline constexpr const char* card_source = "Read from a card";

/// The byte that makes the sum of bytes 1 to 254 of a card 1 modulo 256, for @p image.
[[nodiscard]] std::uint8_t Card_Checksum(const Byte_Image& image);

/// Marks the tune as going to a card: reserved bytes 0, dataset byte, checksum byte.
void Prepare_Card_Image();

/// Tells the user when the tune would make its receiver a slave; there is no way out of it.
void Warn_Of_Slave_Mode();

/// One line a byte, "number: value", ended by CR LF.
[[nodiscard]] std::string Byte_Lines(std::span<const std::uint8_t> bytes);

/// The same of a whole image.
[[nodiscard]] std::string Byte_Lines(const Byte_Image& image);

/// The end of a read from a card, CardByte being what was read and the tune before it the newest undo point:
/// names the source, asks about another dataset and refreshes the views. On Cancel tune, names, directory and
/// description are back. The outcome goes into @p status.
void Finish_Card_Read(Shown_Text& status);

}  // namespace kx
