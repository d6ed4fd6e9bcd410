// Two projects compared. cases/words.txt has what is said of each member that a screen sets.
#include "places/differences.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "places/key_places.h"
#include "support/temp_folder.h"
#include "text/codepage.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kFolder = OSTRAND_SOURCE_DIR "/tests/";

// A line of the members' cases: "[SCAN SETUP] ScanMode= -1 | 0".
struct Member {
  std::string section;
  std::string key;
  std::string values[2];
};

// The keys that each case changes, in Windows-1252.
std::vector<std::vector<Member>> changesOfMembers() {
  std::vector<std::vector<Member>> cases;
  const std::string all = testing::ReadDisk(std::string(kFolder) + "script/cases/members.txt");
  bool inCase = false;
  for (std::string_view rest = all; !rest.empty();) {
    std::string line(Trim(TakeLine(rest)));
    const bool isKey = line.starts_with("[") && !line.starts_with("[settings]");
    if (isKey) {
      if (!inCase) cases.emplace_back();
      line = Windows1252FromUtf8(line);
      const std::size_t close = line.find("] ");
      const std::size_t equal = line.find("= ");
      const std::size_t bar = line.find(" | ");
      cases.back().push_back({line.substr(0, close + 1),
                              line.substr(close + 2, equal - close - 2),
                              {line.substr(equal + 2, bar - equal - 2), line.substr(bar + 3)}});
    }
    inCase = isKey;
  }
  return cases;
}

// A file with these values. Unless they are all of an item, it has the item in any case.
std::string fileOf(const std::vector<Member>& members, std::size_t which) {
  constexpr std::size_t kFewKeysOfAnItem = 12;
  std::string text;
  if (members.size() < kFewKeysOfAnItem) {
    for (const Member& member : members) {
      text += member.section + "\r\nBlockTime(1)=1\r\nDataStyle(1)=1\r\nInclude(0,1)=1\r\n";
    }
  }
  for (const Member& member : members) {
    const std::string& value = member.values[which];
    if (value == "none") continue;
    text += member.section + "\r\n" + member.key + "=" + (value == "blank" ? "" : value) + "\r\n";
  }
  return text;
}

std::string wordsOf(std::string_view before, std::string_view after) {
  std::string text;
  for (const Difference& difference : DifferencesOf(before, after)) {
    text += Utf8FromWindows1252(InWords(difference)) + "\n";
  }
  return text;
}

TEST(Differences, AreSaidInWordsForEveryMemberThatAScreenSets) {
  const std::string place = std::string(kFolder) + "places/cases/words.txt";
  std::string all;
  std::set<std::string> seen;
  for (const std::vector<Member>& members : changesOfMembers()) {
    const std::string words = wordsOf(fileOf(members, 0), fileOf(members, 1));
    EXPECT_NE(words, "") << members.front().key;
    if (seen.insert(words).second) all += words + "\n";
  }
  if (std::getenv("OSTRAND_RENEW_GOLDEN") != nullptr) std::ofstream(place) << all;
  EXPECT_EQ(all, testing::ReadDisk(place));
}

TEST(Differences, NameExactlyTheOneKeyOfAnExampleThatDiffers) {
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/examples")) {
    if (entry.path().extension() != ".VKG") continue;
    const std::string text = testing::ReadDisk(entry.path());
    EXPECT_EQ(wordsOf(text, text), "") << entry.path();
    std::set<std::string> seen;  // of a repeated key only the last one counts
    std::string section;
    std::size_t start = 0;
    for (std::string_view rest = text; !rest.empty(); start = text.size() - rest.size()) {
      const std::string line(TakeLine(rest));
      if (line.starts_with("[")) section = line;
      const std::size_t equal = line.find('=');
      if (equal == std::string::npos) continue;
      const std::string key = line.substr(0, equal);
      if (text.find("\r\n" + key + "=", start) != std::string::npos) continue;
      std::string changed = text;
      changed.insert(start + line.size(), "7");
      const std::vector<Difference> differences = DifferencesOf(text, changed);
      if (key == "PCTime" || key == "VersionLastSaved") {
        EXPECT_TRUE(differences.empty()) << line;
        continue;
      }
      ASSERT_EQ(differences.size(), 1U) << section << line;
      EXPECT_EQ(differences[0].section, section) << line;
      EXPECT_EQ(differences[0].key, key);
      EXPECT_EQ(differences[0].after, std::string(Trim(line.substr(equal + 1))) + "7");
      EXPECT_NE(differences[0].words, key) << section << " has no words for it";
      EXPECT_NE(differences[0].isInWords, differences[0].wasInWords) << line;
    }
  }
}

TEST(Differences, SayThatAnItemIsNewOrGoneInOneLine) {
  const std::string one = "[VOLTAGE BLOCKS]\r\nBlockCount= 1\r\nReps(1)= 2\r\n";
  const std::string two =
      "[VOLTAGE BLOCKS]\r\nBlockCount= 2\r\nReps(1)= 2\r\nReps(2)= 3\r\nTable(1,2,4)= 1\r\n"
      "AliasName(2,1)=Oil\r\n";
  EXPECT_EQ(wordsOf(one, two),
            "Voltage blocks: number of blocks 2, was 1\nVoltage block 2: added\n");
  EXPECT_EQ(wordsOf(two, one),
            "Voltage blocks: number of blocks 1, was 2\nVoltage block 2: removed\n");
}

TEST(Differences, ReportUnknownKeysAsTheyAre) {
  EXPECT_EQ(
      wordsOf("[SCAN SETUP]\r\nA= 1\r\nNew= 1\r\n", "[SCAN SETUP]\r\nA= 1\r\n[OTHER]\r\nB= 2\n"),
      "Scan: New none, was 1\n[OTHER]: added\n");
}

}  // namespace
}  // namespace ostrand
