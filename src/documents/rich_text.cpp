#include "documents/rich_text.h"

#include <algorithm>
#include <array>

#include "text/number.h"

namespace ostrand {
namespace {

// The colours of a document. Entry 0 is the reader's default colour.
class ColourTable {
 public:
  int EntryOf(Colour colour) {
    if (colour < 0) return 0;
    const auto found = std::find(colours_.begin(), colours_.end(), colour);
    const auto entry = found - colours_.begin() + 1;
    if (found == colours_.end()) colours_.push_back(colour);
    return static_cast<int>(entry);
  }

  [[nodiscard]] std::string Rtf() const {
    std::string table = "{\\colortbl ;";
    for (const Colour colour : colours_) {
      table += "\\red" + NumberText(colour & 0xFF) + "\\green" + NumberText((colour >> 8) & 0xFF) +
               "\\blue" + NumberText((colour >> 16) & 0xFF) + ";";
    }
    return table + "}";
  }

 private:
  std::vector<Colour> colours_;
};

// Appends a character or its escape sequence.
void appendEscaped(std::string& to, char c) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  if (c == '\\' || c == '{' || c == '}') {
    to += '\\';
    to += c;
  } else if (c == '\t') {
    to += "\\tab ";
  } else if (byte < 0x20 || byte >= 0x7F) {
    to += "\\'";
    to += kDigits[byte >> 4U];
    to += kDigits[byte & 0xFU];
  } else {
    to += c;
  }
}

}  // namespace

void PlainText::Text(std::string_view text) {
  text_ = text;
  start_ = 0;
}

void PlainText::SelStart(std::size_t position) { start_ = std::min(position, text_.size()); }

void PlainText::SelText(std::string_view text) {
  text_.insert(start_, text);
  start_ += text.size();
}

void StyledText::Text(std::string_view text) {
  look_ = {};
  runs_.clear();
  if (!text.empty()) runs_.push_back({text.size(), look_});
  PlainText::Text(text);
}

void StyledText::SelText(std::string_view text) {
  std::size_t before = SelStart();
  auto run = runs_.begin();
  for (; run != runs_.end() && run->length <= before; ++run) before -= run->length;
  if (before > 0) {  // within a run: the part after the insertion point becomes a separate run
    const Run rest = {run->length - before, run->look};
    run->length = before;
    run = runs_.insert(run + 1, rest);
  }
  if (run != runs_.begin() && (run - 1)->look == look_) {
    (run - 1)->length += text.size();
  } else if (!text.empty()) {
    runs_.insert(run, {text.size(), look_});
  }
  PlainText::SelText(text);
}

std::string StyledText::Rtf() const {
  const std::string text = Text();
  ColourTable colours;
  std::string body;
  Look shown;
  auto run = runs_.begin();
  std::size_t runEnd = runs_.empty() ? 0 : run->length;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text.compare(at, 2, "\r\n") == 0) {
      body += "\\par\r\n";
      ++at;
      continue;
    }
    while (at >= runEnd) runEnd += (++run)->length;
    const Look& look = run->look;
    if (look.colour != shown.colour) {
      body += "\\cf" + NumberText(colours.EntryOf(look.colour)) + " ";
    }
    if (look.underline != shown.underline) body += look.underline ? "\\ul " : "\\ulnone ";
    shown = look;
    appendEscaped(body, text[at]);
  }
  return "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern\\fprq1\\fcharset0 Courier "
         "New;}}\r\n" +
         colours.Rtf() + "\r\n\\pard\\plain\\f0\\fs20\r\n" + body + "}\r\n";
}

}  // namespace ostrand
