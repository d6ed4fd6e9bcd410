// The wiring diagram (module MAKEWIRE): the logger's panel with each sensor at its terminal.
#pragma once

#include <string>
#include <string_view>

#include "documents/document_head.h"
#include "model/statement_channels.h"
#include "model/store.h"
#include "platform/clock.h"
#include "platform/filesystem.h"
#include "platform/forms.h"

namespace ostrand {

// The bytes of the diagram, lines ending in CR LF. The box characters are in code page 437, the
// project's texts in Windows-1252. `channels` are those of the program that will run on this
// wiring.
std::string WiringText(const ProjectStore& store, const StatementChannels& channels,
                       const DocumentHead& head);

// A diagram in UTF-8 with plain line feeds, for terminals.
std::string WiringUtf8(std::string_view diagram);

class MAKEWIRE {
 public:
  MAKEWIRE(const ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
           platform::Forms& forms)
      : store_(store), files_(files), clock_(clock), forms_(forms) {}

  // Writes the whole diagram to the project's path, given without extension, with ".VKW". On
  // failure reports it and returns false.
  bool MakeWire_MasterWire(std::string_view path, const StatementChannels& channels);

 private:
  const ProjectStore& store_;
  platform::FileSystem& files_;
  platform::Clock& clock_;
  platform::Forms& forms_;
};

}  // namespace ostrand
