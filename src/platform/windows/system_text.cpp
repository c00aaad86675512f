#include "platform/windows/system_text.h"

#include <windows.h>

namespace kx::platform {
namespace {

std::wstring Wide(const std::string& bytes, UINT code_page) {
  const int length = static_cast<int>(bytes.size());
  const int needed = MultiByteToWideChar(code_page, 0, bytes.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(code_page, 0, bytes.data(), length, wide.data(), needed);
  return wide;
}

std::string Narrow(const std::wstring& wide, UINT code_page) {
  const int length = static_cast<int>(wide.size());
  const int needed = WideCharToMultiByte(code_page, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(code_page, 0, wide.data(), length, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::string From_Code_Page(const std::string& bytes) { return Narrow(Wide(bytes, CP_ACP), CP_UTF8); }

std::string To_Code_Page(const std::string& text) { return Narrow(Wide(text, CP_UTF8), CP_ACP); }

std::wstring Wide_Text(const std::string& text) { return Wide(text, CP_UTF8); }

std::string Message_Of(unsigned long number) {
  char text[512];
  constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  const DWORD length = FormatMessageA(flags, nullptr, number, 0, text, sizeof text, nullptr);
  std::string message(text, length);
  message.erase(message.find_last_not_of("\r\n .") + 1);  // the table has whole sentences
  return message.empty() ? "error " + std::to_string(number) : From_Code_Page(message);
}

}  // namespace kx::platform
