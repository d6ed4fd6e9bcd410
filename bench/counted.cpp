// For callgrind to count: one load of the largest project, one generation of the longest program.
#include <cstring>

#include "generator/savedld.h"
#include "machine.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "projects.h"

namespace {

// Named routines, so that callgrind can collect within them alone.
__attribute__((noinline)) void countedLoad(ostrand::ProjectStore& store, const std::string& file) {
  ostrand::ORVUS_GENFILE::ReadProjectText(store, file);
}

__attribute__((noinline)) std::string countedGenerate(ostrand::SAVEDLD& generator) {
  return generator.ProgramText();
}

}  // namespace

int main() {
  using namespace ostrand;
  const auto store = NewStore();
  bench::MakeLargestProject(*store);
  const std::string file = ORVUS_GENFILE::ProjectFileText(*store, bench::FixedClock().Now());
  ORVUS_COMMON::ClearStore(*store);
  ORVUS_COMMON::SetAllDefaults(*store);
  countedLoad(*store, file);

  bench::MakeLongestProgram(*store);
  bench::NoFiles files;
  bench::FixedClock clock;
  bench::SilentForms forms;
  SAVEDLD generator(*store, files, clock, forms);
  return countedGenerate(generator).empty() ? 1 : 0;
}
