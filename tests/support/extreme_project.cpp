#include "support/extreme_project.h"

#include <array>
#include <cstdlib>
#include <vector>

#include "documents/makewire.h"
#include "documents/rich_text.h"
#include "documents/summary.h"
#include "documents/table_description.h"
#include "generator/savedld.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "model/scan_time.h"
#include "model/stored_text.h"
#include "platform/quiet_forms.h"
#include "projectfile/genfile.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_random.h"
#include "text/line_diff.h"
#include "text/strings.h"
#include "verify/verify_before_save.h"

namespace ostrand::testing {
namespace {

constexpr std::array<std::string_view, 24> kExtremes = {
    "2147483647",  "-2147483648", "2147483646", "32767", "-32768",     "32766",
    "0",           "-1",          "1",          "65536", "4294967296", "1E38",
    "-3.4E38",     "1E-45",       "nan",        "1E308", "-0.001",     "",
    "Flag(32767)", "DataEvent(,", "12,,",       "7",     "255",        "100"};

// Answers every box with its first choice, so that repairs of a check take place.
class WillingForms : public platform::QuietForms {
 public:
  platform::Answer ShowBox(const platform::MessageBox& box) override {
    return box.buttons == platform::Buttons::kYesNo ||
                   box.buttons == platform::Buttons::kYesNoCancel
               ? platform::Answer::kYes
               : platform::Answer::kOk;
  }
};

void startProject(ProjectStore& store) {
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
}

}  // namespace

std::string ExtremeProjectText(std::string_view bytes) {
  constexpr std::size_t kEdit = 3;  // bytes of one edit: two for the line, one for the value
  const auto at = [&](std::size_t index) {
    return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
  };
  static const auto store = NewStore();
  MakeRandomProject(*store, at(0) + 1);
  const std::string text = ORVUS_GENFILE::ProjectFileText(*store, {2003, 3, 10, 14, 5, 0});
  const std::vector<std::string_view> lines = LinesOf(text);
  std::vector<std::string> edited(lines.begin(), lines.end());
  for (std::size_t edit = 1; edit + kEdit <= bytes.size(); edit += kEdit) {
    std::string& line = edited[(at(edit) * 256 + at(edit + 1)) % edited.size()];
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    line.replace(equals + 1, std::string::npos, kExtremes[at(edit + 2) % kExtremes.size()]);
  }
  std::string result;
  for (const std::string& line : edited) result.append(line).append("\r\n");
  return result;
}

std::string MakeEverything(std::string_view projectText) {
  static const auto store = NewStore();
  startProject(*store);
  std::string all = SkippedText(ORVUS_GENFILE::ReadProjectText(*store, projectText));
  MemoryFileSystem files;
  FixedClock clock;
  WillingForms forms;
  const CalcVarRefs refs = CollectCalcVarRefs(*store);
  const CheckContext context{*store, forms, -1, refs};
  const DocumentHead head = {"extreme", clock.Now()};
  const auto makeFiles = [&] {
    PlainText summary;
    Summarize(*store, {.projectName = "extreme"}, summary, forms);
    all += summary.Text();
    for (const Finding& finding : CheckAll(context)) all += finding.text;
    SAVEDLD generator(*store, files, clock, forms);
    all += generator.ProgramText();
    all += TableDescriptionText(*store, head);
    all += WiringUtf8(WiringText(*store, generator.Channels(), head));
  };
  makeFiles();
  bool bad = false;
  bool upgrade = false;
  ORVUS_COMMON::VerifyBeforeSave(context, bad, upgrade);
  makeFiles();

  const std::string saved = ORVUS_GENFILE::ProjectFileText(*store, clock.Now());
  const bool keepable = !HoldsSectionMark(store->Gen.Version);
  startProject(*store);
  if (ORVUS_GENFILE::ReadProjectText(*store, saved).skipped > 0 && keepable) std::abort();
  return all + saved;
}

}  // namespace ostrand::testing
