#include "generator/savedld.h"

#include "generator/section_faults.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "text/strings.h"

namespace ostrand {

SAVEDLD::SAVEDLD(ProjectStore& store, platform::FileSystem& files, platform::Clock& clock,
                 platform::Forms& forms)
    : files_(files), clock_(clock), forms_(forms), run_(store) {}

std::string SAVEDLD::ProgramText() {
  faults_.clear();
  run_.Start();
  Header();
  section("SAVEDLD.Constants", &SAVEDLD::Constants);
  section("SAVEDLD.PubVars", &SAVEDLD::PubVars);
  section("SAVEDLD.OutputTables", &SAVEDLD::OutputTables);
  section("SAVEDLD.Subroutines", &SAVEDLD::Subroutines);
  section("SAVEDLD.MainProgram", &SAVEDLD::MainProgram);
  return ProgramBytes(run_.lines, run_.zero, run_.store);
}

void SAVEDLD::section(std::string_view routine, void (SAVEDLD::*body)()) {
  if (Guarded(forms_, routine, [&] { (this->*body)(); })) return;
  faults_.push_back(std::string(routine) + " failed " + PlaceOfFault(run_.store, run_.lines));
}

bool SAVEDLD::SaveTheDld(std::string_view base) {
  return Guarded(forms_, "SAVEDLD.SaveTheDld", [&] {
    const std::string text = ProgramText();
    const std::string path = std::string(base) + ".VKP";
    const auto written = platform::WriteWhole(files_, path, text, platform::FolderSync::kLater);
    if (!written) throw FileAccess(written.ErrorText());
  });
}

void SAVEDLD::Header() {
  const platform::Moment now = clock_.Now();
  const Fill margin{' ', 20};
  run_.PutEmpty();
  run_.Put({"'", margin, "   Program name: ", Upper(baseName_), ".VKP"});
  run_.Put({"'", margin, "     Written by: ", run_.store.Gen.Operator});
  run_.Put({"'", margin, "    I.D. number: ", run_.store.Gen.IDNumber});
  run_.Put({"'", margin, "   Date written: ", DateText(now)});
  run_.Put({"'", margin, "   Time written: ", TimeText(now)});
  run_.Put({"'", margin, " QUILLON Version: ", run_.store.Gen.VersionLastSaved});
  run_.PutEmpty();
  run_.Put({"' This program was generated using Fernhollow Instruments's QUILLON"});
  run_.Put({"' Program Generator for the VK7300 Measurement & Control System."});
  run_.PutEmpty();
}

}  // namespace ostrand
