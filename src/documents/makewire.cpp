#include "documents/makewire.h"

#include <vector>

#include "documents/document_file.h"
#include "documents/line_chars.h"
#include "documents/wire_panel.h"
#include "documents/wiring.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "text/codepage.h"

namespace ostrand {

std::string WiringText(const ProjectStore& store, const StatementChannels& channels,
                       const DocumentHead& head) {
  return HeadLines(head, store.Gen, kWiringDiagramHead) + "\r\n" +
         PanelLines(WiringOf(store, channels));
}

std::string WiringUtf8(std::string_view diagram) {
  const std::vector<bool> drawn = DrawnBytes(diagram);
  std::string result;
  for (std::size_t at = 0; at < diagram.size(); ++at) {
    const char byte = diagram[at];
    if (byte == '\r') continue;
    const LineChar* const lineChar = drawn[at] ? LineCharOf(byte) : nullptr;
    AppendUtf8(result, lineChar != nullptr ? lineChar->character : CharacterOf(byte));
  }
  return result;
}

bool MAKEWIRE::MakeWire_MasterWire(std::string_view path, const StatementChannels& channels) {
  bool written = false;
  return Guarded(forms_, "MAKEWIRE.MakeWire_MasterWire",
                 [&] {
                   const DocumentHead head = {platform::Split(path).title, clock_.Now()};
                   written =
                       WriteDocument(files_, forms_,
                                     std::string(path) + std::string(kWiringDiagramHead.extension),
                                     WiringText(store_, channels, head));
                 }) &&
         written;
}

}  // namespace ostrand
