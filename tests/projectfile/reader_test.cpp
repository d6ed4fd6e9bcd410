// Reading project files of this and older versions, in the files of the folder `cases`.
#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/project_cases.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

using testing::CaseStep;

std::unique_ptr<ProjectStore> readText(std::string_view text, ReadReport* report = nullptr) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  const ReadReport read = ReadProjectText(*store, text);
  if (report != nullptr) *report = read;
  return store;
}

// The lines with "\r" and "\0" replaced by their characters.
std::string textOf(const CaseStep& step) {
  std::string text;
  for (const std::string& line : step.lines) {
    text += text.empty() ? "" : "\n";
    for (std::size_t i = 0; i < line.size(); ++i) {
      const bool escape = line[i] == '\\';
      text += escape ? (line[i + 1] == 'r' ? '\r' : '\0') : line[i];
      i += escape ? 1 : 0;
    }
  }
  return text;
}

class CaseOfReading {
 public:
  void Take(const CaseStep& step) {
    if (step.kind.empty()) {
      head_ = textOf(step) + (step.lines.empty() ? "" : "\n");
    } else if (step.kind == "file") {
      text_ = head_ + textOf(step);
      saved_ = ProjectFileText(*readText(text_, &report_), {2003, 3, 10, 14, 5, 0});
    } else if (step.kind.starts_with("skipped ")) {
      EXPECT_EQ(report_.skipped, Val(step.kind.substr(8))) << text_;
      EXPECT_EQ(report_.first.empty() ? "" : SkippedLineText(report_.first.front()), textOf(step));
    } else {
      ASSERT_TRUE(step.kind == "saved" || step.kind == "never") << step.kind;
      for (const std::string& line : step.lines) {
        const bool saved = step.kind == "saved";
        EXPECT_EQ(Holds(saved_, (saved ? "\r\n" : "") + textOf({"", {line}}) + "\r\n"), saved)
            << text_ << "\n gives or lacks: " << line;
      }
    }
  }

 private:
  std::string head_, text_, saved_;
  ReadReport report_;
};

TEST(ProjectReader, ReadsEachLineOrReportsIt) {
  testing::PlayProjectCases<CaseOfReading>("projectfile/cases/reader.txt");
  auto store = NewStore();
  const ReadReport many = ReadProjectText(*store, "a\nb\nc\nd\ne\nf\n");
  EXPECT_EQ(many.first.size(), 5U);
  EXPECT_TRUE(SkippedText(many).starts_with("6 lines of the file were not read, and"));
  EXPECT_TRUE(SkippedText(many).ends_with("\r\nline 5: e: in no section of a project\r\n..."));
}

TEST(ProjectReader, ToleratesAnyBytes) {
  std::string binary;
  for (int i = 0; i < 100000; ++i) binary += static_cast<char>((i * 7919 + i / 251) % 256);
  readText(binary);
  readText("[VOLTAGE BLOCKS]\nBlockCount=2\n" + binary);
  // One line of 100 MB, as a value and as a header.
  const std::string large(100'000'000, 'x');
  EXPECT_EQ(readText("[CONFIGURATION]\nOperator=" + large + "\n")->Gen.Operator.size(),
            large.size());
  EXPECT_EQ(readText(large + "[" + "\nVersion=1")->Gen.Version, "6.0");
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
