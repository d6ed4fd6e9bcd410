// The program of a project, without a change to it.
#pragma once

#include <string>
#include <vector>

#include "model/statement_channels.h"
#include "model/store.h"
#include "platform/surroundings.h"

namespace ostrand {

struct ProgramPreview {
  std::string text;                 // as SAVEDLD::ProgramText
  std::vector<std::string> faults;  // as SAVEDLD::Faults
  StatementChannels channels;
};

// Generates from a copy, as the generator repairs a few values. Asks nothing: what fails is among
// the faults.
ProgramPreview PreviewOf(const ProjectStore& store, const platform::Surroundings& around,
                         const std::string& baseName, const std::string& hostApp);

}  // namespace ostrand
