#include "settings/section_text.h"

#include <algorithm>

#include "settings/message.h"

namespace kx {
namespace {

/// The value as it stands in @p text.
std::optional<std::string_view> Raw_Value(std::string_view text, std::string_view key, int occurrence) {
  std::size_t at = 0;
  for (int found = 0;; at += key.size()) {
    at = text.find(key, at);
    if (at == std::string_view::npos || key.empty()) return {};
    if (++found == occurrence) break;
  }
  const std::size_t equals = text.find('=', at);
  if (equals == std::string_view::npos) return {};
  const std::size_t end = text.find("\r\n", equals);
  if (end == std::string_view::npos) return {};
  return text.substr(equals + 1, end - equals - 1);
}

}  // namespace

std::optional<std::string> Setting_Value(std::string_view text, std::string_view key, int occurrence) {
  const auto raw = Raw_Value(text, key, occurrence);
  if (!raw) return {};
  std::string value(*raw);
  std::replace(value.begin(), value.end(), ',', '.');
  return value;
}

std::optional<std::string_view> Setting_Field(std::string_view value, int data_no) {
  for (int field = 1; field < data_no; ++field) {
    const std::size_t tab = value.find('\t');
    if (tab == std::string_view::npos) return {};
    value.remove_prefix(tab + 1);
  }
  for (const char end : {'\t', ';', '\r'}) {
    const std::size_t at = value.find(end);
    if (at != std::string_view::npos) return value.substr(0, at);
  }
  return value;
}

std::string get_log_file_setting(std::string_view text, std::string_view key, int occurrence, int data_no) {
  const auto value = Setting_Value(text, key, occurrence);
  if (!value) return {};
  const auto field = Setting_Field(*value, data_no);
  if (!field) Tell_Missing_Field(data_no);
  return std::string(field.value_or(""));
}

void set_log_file_setting(std::string& text, std::string_view key, std::string_view new_value, int occurrence,
                          int data_no) {
  const auto value = Raw_Value(text, key, occurrence);
  if (!value) return;
  const auto field = Setting_Field(*value, data_no);
  if (!field) return Tell_Missing_Field(data_no);
  text.replace(static_cast<std::size_t>(field->data() - text.data()), field->size(), new_value);
}

void Tell_Missing_Field(int data_no) {
  Tell("Did not find data no:" + std::to_string(data_no), platform::Icon::none, "WARNING");
}

}  // namespace kx
