#include "workspace/rich_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view signature = "{\\rtf";
constexpr std::string_view header =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern\\fprq1\\fcharset0 Courier New;}}\r\n"
    "\\f0\\fs18 ";

/// Groups whose text is not part of the document.
constexpr std::array<std::string_view, 9> hidden_groups{
    "fonttbl", "colortbl", "stylesheet", "info", "pict", "object", "header", "footer", "footnote"};

std::string Escaped(char c) {
  switch (c) {
    case '\\':
      return "\\\\";
    case '{':
      return "\\{";
    case '}':
      return "\\}";
    case '\t':
      return "\\tab ";
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x20 && byte < 0x7F) return {c};
  constexpr std::string_view digits = "0123456789abcdef";
  return {'\\', '\'', digits[byte >> 4], digits[byte & 15]};
}

bool Is_Letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Takes a rich text file apart from its front to its end.
class Reader {
 public:
  explicit Reader(std::string_view file) : rest_(file) {}

  /// Windows-1252 text with CR LF.
  std::string Text() {
    while (!rest_.empty()) Take(Next());
    return std::move(text_);
  }

 private:
  char Next() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void Take(char c) {
    switch (c) {
      case '{':
        groups_.push_back(hidden_);
        break;
      case '}':
        Leave_Group();
        break;
      case '\\':
        Take_Control();
        break;
      case '\r':
      case '\n':
        break;  // line ends of the file mean nothing
      default:
        Put({&c, 1});
    }
  }

  void Leave_Group() {
    if (groups_.empty()) return;
    hidden_ = groups_.back();
    groups_.pop_back();
    if (groups_.empty()) rest_ = {};  // what follows the document is not part of it
  }

  void Put(std::string_view text) {
    if (!hidden_) text_ += text;
  }

  void Take_Control() {
    if (rest_.empty()) return;
    if (!Is_Letter(rest_.front())) return Take_Symbol(Next());
    const auto end = std::ranges::find_if_not(rest_, Is_Letter) - rest_.begin();
    const std::string_view word = rest_.substr(0, static_cast<std::size_t>(end));
    rest_.remove_prefix(word.size());
    const int number = Take_Number();
    if (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    Obey(word, number);
  }

  /// The number behind a control word; 0 when there is none.
  int Take_Number() {
    int number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
  }

  void Take_Symbol(char symbol) {
    switch (symbol) {
      case '\\':
      case '{':
      case '}':
        return Put({&symbol, 1});
      case '~':
        return Put(" ");
      case '_':
        return Put("-");
      case '*':
        hidden_ = true;
        return;
      case '\r':
      case '\n':
        return Put("\r\n");
      case '\'':
        return Take_Hex();
      default:
        return;
    }
  }

  void Take_Hex() {
    const std::string_view digits = rest_.substr(0, 2);
    unsigned char byte = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (error != std::errc() || end != digits.data() + 2) return;
    rest_.remove_prefix(2);
    const char c = static_cast<char>(byte);
    Put({&c, 1});
  }

  void Obey(std::string_view word, int number) {
    if (word == "par" || word == "line") return Put("\r\n");
    if (word == "tab") return Put("\t");
    if (word == "bin" && number > 0)
      rest_.remove_prefix(std::min(rest_.size(), static_cast<std::size_t>(number)));
    if (std::ranges::find(hidden_groups, word) != hidden_groups.end()) hidden_ = true;
  }

  std::string_view rest_;
  std::string text_;
  std::vector<bool> groups_;  ///< whether the text around each open group is hidden
  bool hidden_ = false;
};

}  // namespace

std::string Write_Rich_Text(std::string_view text) {
  std::string file(header);
  for (const std::string_view line : Lines_Of(text)) {
    for (const char c : To_Windows_1252(line)) file += Escaped(c);
    file += "\\par\r\n";
  }
  return file + "}\r\n";
}

std::optional<std::string> Read_Rich_Text(std::string_view file) {
  if (!file.starts_with(signature)) return {};
  return From_Windows_1252(Reader(file).Text());
}

}  // namespace kx
