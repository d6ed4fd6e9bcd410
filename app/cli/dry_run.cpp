#include "dry_run.h"

namespace ostrand::cli {
namespace {

class DroppedFile final : public platform::OutputFile {
 public:
  Result<> Write(std::string_view) override { return ostrand::Done{}; }
  Result<> Sync() override { return ostrand::Done{}; }
  Result<> Close() override { return ostrand::Done{}; }
};

}  // namespace

Result<std::unique_ptr<platform::OutputFile>> UnchangedFiles::Create(std::string_view,
                                                                     std::string_view) {
  return std::unique_ptr<platform::OutputFile>(std::make_unique<DroppedFile>());
}

}  // namespace ostrand::cli
