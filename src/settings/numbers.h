#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The number rules of every text and byte in the program, independent of the locale.
namespace kx {

/// Nearest whole number, ties to even, judged on the double itself.
[[nodiscard]] double Round_Whole(double value);

/// Nearest with @p decimals places, ties to even, judged on the decimal text of 15 significant digits.
[[nodiscard]] double Round_To(double value, int decimals);

/// Nearest byte, ties to even. Throws Failure "Overflow" outside 0..255.
[[nodiscard]] std::uint8_t To_Byte(double value);

/// Nearest 16-bit whole number, ties to even. Throws Failure "Overflow" outside -32768..32767.
[[nodiscard]] std::int16_t To_Int16(double value);

/// Byte of @p value: clipped to 0..255, then the whole part of value + 0.001, so that an inverse conversion
/// which lands a hair under a whole number does not lose it. No value counts as 0.
[[nodiscard]] std::uint8_t byte_chk(std::optional<double> value);

/// The same for a number's text, read by Val_Any.
[[nodiscard]] std::uint8_t byte_chk(std::string_view text);

/// Text of @p value by a mask of zeros such as "0", "00" or "0.00": half away from zero on the decimal text
/// of 15 significant digits, "." as sign, leading zeros as the mask has them, "-" before them ("-03"). An
/// empty mask gives Number_Text.
[[nodiscard]] std::string Format(double value, std::string_view mask);

/// The same for a value that may be missing; that and a value beyond all numbers give an empty text.
[[nodiscard]] std::string Format(std::optional<double> value, std::string_view mask);

/// Default text of a number: up to 15 significant digits, no trailing zeros, no blanks.
[[nodiscard]] std::string Number_Text(double value);

/// Mask "0" or "0.0..." with @p decimals places, at most four.
[[nodiscard]] std::string Decimals_Mask(int decimals);

/// Leading number of @p text with "," or "." as decimal sign; blanks do not count; 0 when there is none.
[[nodiscard]] double Val_Any(std::string_view text);

/// The number that the whole of @p text is, decimal sign as in Val_Any, blanks around it allowed. Nothing
/// when the text is not one number.
[[nodiscard]] std::optional<double> Whole_Number_Text(std::string_view text);

/// The same where a number is required. Throws Failure "Type mismatch" when there is none.
[[nodiscard]] double Required_Number(std::string_view text);

}  // namespace kx
