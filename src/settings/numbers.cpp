#include "settings/numbers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "settings/failure.h"

namespace kx {
namespace {

constexpr int significant_digits = 15;

/// A number's decimal text taken apart: the 15 digits, and how many of them stand before the point.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

Decimal Decimal_Of(double value) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.*e", significant_digits - 1, std::fabs(value));
  const std::string_view all(text.data());
  const std::size_t e = all.find('e');
  Decimal result;
  result.negative = value < 0;
  result.digits = std::string(all.substr(0, 1)) + std::string(all.substr(2, e - 2));
  result.point = std::atoi(text.data() + e + 1) + 1;
  return result;
}

/// Adds one to the last digit of @p digits; true when the carry leaves the front.
bool Add_One(std::string& digits) {
  const std::size_t last = digits.find_last_not_of('9');
  const bool leaves = last == std::string::npos;
  if (!leaves) ++digits[last];
  for (std::size_t i = leaves ? 0 : last + 1; i < digits.size(); ++i) digits[i] = '0';
  return leaves;
}

/// True when the digits from @p keep on make up more than half a unit, or just half and @p half_up says so.
bool Rounds_Up(const std::string& digits, std::size_t keep, bool half_up) {
  if (keep >= digits.size() || digits[keep] < '5') return false;
  if (digits[keep] > '5' || digits.find_first_not_of('0', keep + 1) != std::string::npos) return true;
  return half_up;
}

enum class Ties { away, even };

/// All digits of @p value in units of 10^-decimals, without point or sign.
std::string Scaled_Digits(const Decimal& value, int decimals, Ties ties) {
  const int wanted = value.point + decimals;
  if (wanted < 0) return "0";
  std::string padded = value.digits;
  const auto keep = static_cast<std::size_t>(wanted);
  if (padded.size() < keep) padded.append(keep - padded.size(), '0');
  std::string kept = padded.substr(0, keep);
  const bool odd = !kept.empty() && (kept.back() - '0') % 2 == 1;
  if (Rounds_Up(padded, keep, ties == Ties::away || odd) && Add_One(kept)) kept.insert(kept.begin(), '1');
  return kept.empty() ? "0" : kept;
}

/// @p value rounded to @p decimals places where the decimal text cannot tell otherwise: well off a tie, and
/// small enough for the 15 digits to reach far behind the last place. The calculations of a log round a
/// hundred thousand times, and a text takes twenty times as long.
std::optional<double> Rounded_Far_From_A_Tie(double value, int decimals) {
  static constexpr std::array powers = {1.0, 10.0, 100.0, 1000.0, 10000.0};
  if (static_cast<std::size_t>(decimals) >= powers.size()) return {};
  const double power = powers[static_cast<std::size_t>(decimals)];
  const double scaled = std::fabs(value) * power;
  if (!(scaled < 1e8)) return {};
  const double whole = std::nearbyint(scaled);
  if (std::fabs(std::fabs(scaled - whole) - 0.5) < 1e-5) return {};
  return value < 0 ? -(whole / power) : whole / power;
}

/// @p text as a number can be read: the first "," a ".", no blanks.
std::string Normalised(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == ' ' || c == '\t') continue;
    result += c;
  }
  const std::size_t comma = result.find(',');
  if (comma != std::string::npos) result[comma] = '.';
  return result;
}

/// Length of the longest decimal number at the head of @p text: sign, digits, one point, exponent.
std::size_t Number_Length(std::string_view text) {
  const auto digits_from = [text](std::size_t at) {
    while (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at]))) ++at;
    return at;
  };
  const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  std::size_t end = digits_from(sign);
  std::size_t digits = end - sign;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = digits_from(end + 1);
    digits += fraction - end - 1;
    end = fraction;
  }
  if (digits == 0) return 0;
  if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    const bool signed_exponent = end + 1 < text.size() && (text[end + 1] == '-' || text[end + 1] == '+');
    const std::size_t first = end + (signed_exponent ? 2 : 1);
    if (digits_from(first) > first) end = digits_from(first);
  }
  return end;
}

/// Of a number that no double holds: true when it is too small, false when it is too large.
bool Is_Tiny(std::string_view text) {
  const std::size_t exponent = text.find_first_of("eE");
  if (exponent != std::string_view::npos) return text.find('-', exponent) != std::string_view::npos;
  return text.substr(0, text.find('.')).find_first_of("123456789") == std::string_view::npos;
}

double Parse(std::string_view text) {
  if (!text.empty() && text[0] == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  const double limit = Is_Tiny(text) ? 0.0 : 1e308;
  return text[0] == '-' ? -limit : limit;
}

}  // namespace

double Round_Whole(double value) { return std::nearbyint(value); }

double Round_To(double value, int decimals) {
  if (decimals <= 0) return Round_Whole(value);
  if (const auto quick = Rounded_Far_From_A_Tie(value, decimals)) return *quick;
  if (!std::isfinite(value)) Fail_Overflow();
  const Decimal decimal = Decimal_Of(value);
  const std::string text = Scaled_Digits(decimal, decimals, Ties::even) + "e-" + std::to_string(decimals);
  const double result = Parse(text);
  return decimal.negative ? -result : result;
}

std::uint8_t To_Byte(double value) {
  const double whole = Round_Whole(value);
  if (!(whole >= 0 && whole <= 255)) Fail_Overflow();
  return static_cast<std::uint8_t>(whole);
}

std::int16_t To_Int16(double value) {
  const double whole = Round_Whole(value);
  if (!(whole >= -32768 && whole <= 32767)) Fail_Overflow();
  return static_cast<std::int16_t>(whole);
}

std::uint8_t byte_chk(std::optional<double> value) {
  const double given = value.value_or(0);
  if (given > 255) return 255;
  if (!(given > 0)) return 0;
  return static_cast<std::uint8_t>(given + 0.001);
}

std::uint8_t byte_chk(std::string_view text) { return byte_chk(std::optional<double>(Val_Any(text))); }

std::string Format(double value, std::string_view mask) {
  if (!std::isfinite(value)) return {};
  if (mask.empty()) return Number_Text(value);
  const std::size_t point = mask.find('.');
  const std::size_t whole_zeros = point == std::string_view::npos ? mask.size() : point;
  const std::size_t decimals = point == std::string_view::npos ? 0 : mask.size() - point - 1;
  const Decimal decimal = Decimal_Of(value);
  std::string digits = Scaled_Digits(decimal, static_cast<int>(decimals), Ties::away);
  digits.erase(0, digits.find_first_not_of('0'));
  const bool negative = decimal.negative && !digits.empty();
  if (digits.size() < whole_zeros + decimals) digits.insert(0, whole_zeros + decimals - digits.size(), '0');
  if (decimals > 0) digits.insert(digits.size() - decimals, ".");
  return negative ? "-" + digits : digits;
}

std::string Format(std::optional<double> value, std::string_view mask) {
  return value ? Format(*value, mask) : std::string();
}

std::string Number_Text(double value) {
  std::array<char, 40> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value == 0 ? 0.0 : value,
                                          std::chars_format::general, significant_digits);
  return error == std::errc() ? std::string(text.data(), end) : std::string();
}

std::string Decimals_Mask(int decimals) {
  if (decimals <= 0) return "0";
  return "0." + std::string(static_cast<std::size_t>(std::min(decimals, 4)), '0');
}

double Val_Any(std::string_view text) {
  const std::string number = Normalised(text);
  return Parse(std::string_view(number).substr(0, Number_Length(number)));
}

std::optional<double> Whole_Number_Text(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
  if (text.find_first_of(" \t") != std::string_view::npos) return {};
  const std::string number = Normalised(text);
  if (Number_Length(number) != number.size()) return {};
  return Parse(number);
}

double Required_Number(std::string_view text) {
  const auto number = Whole_Number_Text(text);
  if (!number) Fail_Type_Mismatch();
  return *number;
}

}  // namespace kx
