#include "documents/wire_rtf.h"

#include <array>
#include <vector>

#include "documents/line_chars.h"
#include "documents/wire_panel.h"
#include "text/codepage.h"
#include "text/number.h"

namespace ostrand {
namespace {

// Font names as in a font table.
constexpr std::string_view kLineFont = "MS LineDraw;";
constexpr std::string_view kCommonFont = "Courier New;";

// Blanks removed together with a caption of the head.
constexpr int kLongRun = 38;

struct Caption {
  std::string_view before;
  std::string_view after;
};
constexpr std::array<Caption, 3> kCaptions = {{{"Date written", "Date written "},
                                               {"Time written", "Time written "},
                                               {"QUILLON Vers :", "QUILLON Vers  :"}}};

// The code of a byte in rich text: \'c4.
std::string codeOf(char byte) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(byte);
  return {'\\', '\'', kDigits[code >> 4U], kDigits[code & 0xFU]};
}

// A letter of a label. A code would be taken for a box character, so a letter outside ASCII is
// written as its Unicode number.
std::string letter(char c) {
  if (c == '\\' || c == '{' || c == '}') return {'\\', c};
  if (static_cast<unsigned char>(c) < ' ') return " ";
  const char32_t character = CharacterOf(c);
  if (character < 0x80) return {c};
  if (character > 0x7FFF) return "?";
  return "\\u" + NumberText(static_cast<int>(character)) + "?";
}

// The diagram in the form of a rich text box.
std::string richTextOf(std::string_view diagram) {
  std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fmodern\\fprq1\\fcharset0 " +
                    std::string(kLineFont) + "}}\r\n\\pard\\plain\\f0\\fs18\r\n";
  const std::vector<bool> drawn = DrawnBytes(diagram);
  for (std::size_t at = 0; at < diagram.size(); ++at) {
    const char byte = diagram[at];
    if (diagram.substr(at, 2) == "\r\n") {
      rtf += "\\par\r\n";
      ++at;
    } else {
      rtf += drawn[at] && LineCharOf(byte) != nullptr ? codeOf(byte) : letter(byte);
    }
  }
  return rtf + "}\r\n";
}

// The caption after a long run of blanks at the start of a text; null if there is none.
const Caption* captionAfterRun(std::string_view text) {
  if (text.substr(0, kLongRun).find_first_not_of(' ') != std::string_view::npos) return nullptr;
  if (text.size() < kLongRun) return nullptr;
  const std::string_view rest = text.substr(kLongRun);
  for (const Caption& caption : kCaptions) {
    if (rest.starts_with(caption.before)) return &caption;
  }
  return nullptr;
}

// The line character whose code begins a text; null if there is none.
const LineChar* lineCharAt(std::string_view text) {
  if (!text.starts_with("\\'")) return nullptr;
  for (const LineChar& lineChar : kLineChars) {
    if (text.starts_with(codeOf(lineChar.code))) return &lineChar;
  }
  return nullptr;
}

}  // namespace

std::string ConvertWireDiagToRTF(std::string_view diagram) {
  return ConvertLineChars(richTextOf(diagram));
}

std::string ConvertLineChars(std::string_view rtf) {
  std::string result;
  while (!rtf.empty()) {
    std::size_t taken = 1;
    if (rtf.starts_with("\\\\")) {  // a backslash of the text, not the start of a code
      taken = 2;
      result += rtf.substr(0, taken);
    } else if (const LineChar* const lineChar = lineCharAt(rtf)) {
      taken = codeOf(lineChar->code).size();
      result += "\\u" + NumberText(int{lineChar->character}) + codeOf(lineChar->plain);
    } else if (const Caption* const caption = captionAfterRun(rtf)) {
      taken = kLongRun + caption->before.size();
      result += caption->after;
    } else if (rtf.starts_with(kLineFont)) {
      taken = kLineFont.size();
      result += kCommonFont;
    } else {
      result += rtf.front();
    }
    rtf.remove_prefix(taken);
  }
  return result;
}

}  // namespace ostrand
