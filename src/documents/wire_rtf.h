// The wiring diagram as rich text (module frmRTBConvert).
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// The bytes of a wiring diagram as a document for word processors, in a fixed pitch font.
std::string ConvertWireDiagToRTF(std::string_view diagram);

// Makes the rich text of a diagram in the old line drawing font readable in a common one: each code
// of a box character becomes its Unicode form with a plain fallback, the font is replaced, and the
// long runs of blanks before the right column of the head are removed.
std::string ConvertLineChars(std::string_view rtf);

}  // namespace ostrand
