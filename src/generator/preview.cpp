#include "generator/preview.h"

#include "generator/savedld.h"
#include "model/new_store.h"
#include "platform/quiet_forms.h"

namespace ostrand {

ProgramPreview PreviewOf(const ProjectStore& store, const platform::Surroundings& around,
                         const std::string& baseName, const std::string& hostApp) {
  const std::unique_ptr<ProjectStore> copy = NewStore();
  *copy = store;
  platform::QuietForms forms;
  SAVEDLD generator(*copy, around.files, around.clock, forms);
  generator.HostApp(hostApp);
  generator.BaseName(baseName);
  ProgramPreview preview;
  preview.text = generator.ProgramText();
  preview.faults = generator.Faults();
  preview.channels = generator.Channels();
  return preview;
}

}  // namespace ostrand
