#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Key lines in the sections of a log file: "key=value" with CR LF, the fields of a value parted by TAB.
/// Texts are the file's own bytes.
///
/// A key is found wherever it stands and is not compared with the whole word before "=": "Log_Def" with
/// occurrence 3 finds "Log_Def2=". So a key with its "=" names one line, one without it a list of lines.
namespace kx {

/// What stands between the next "=" behind the @p occurrence-th @p key (from 1) and the next CR LF, "," as
/// "."; nothing when one of them is missing.
[[nodiscard]] std::optional<std::string> Setting_Value(std::string_view text, std::string_view key,
                                                       int occurrence = 1);

/// Field @p data_no (from 1) of a value: up to the next TAB, else ";", else CR, else its end. Nothing when
/// the value has fewer fields.
[[nodiscard]] std::optional<std::string_view> Setting_Field(std::string_view value, int data_no);

/// Field @p data_no of the value; empty when there is no such line. With fewer fields it is empty too and a
/// box says so.
[[nodiscard]] std::string get_log_file_setting(std::string_view text, std::string_view key,
                                               int occurrence = 1, int data_no = 1);

/// Replaces the field that get_log_file_setting would return by @p new_value, bytes around it as they are. A
/// missing line changes nothing, a missing field shows the same box.
void set_log_file_setting(std::string& text, std::string_view key, std::string_view new_value,
                          int occurrence = 1, int data_no = 1);

/// The box that tells of a missing field.
void Tell_Missing_Field(int data_no);

}  // namespace kx
