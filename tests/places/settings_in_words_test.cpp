// What a project sets beside its blocks, in words.
#include "places/settings_in_words.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>

#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "text/codepage.h"
#include "text/number.h"

namespace ostrand {
namespace {

TEST(SettingsInWords, AreThoseOfTheExamples) {
  std::string all;
  for (const char* name : {"vehicle-test", "weather-mast"}) {
    const std::string example = OSTRAND_SOURCE_DIR "/examples/" + std::string(name) + ".VKG";
    for (const PlaceSettings& place : SettingsInWords(testing::ReadDisk(example))) {
      all += place.place + "\n";
      for (const auto& [words, value] : place.values) {
        all += "  " + Utf8FromWindows1252(words + ": " + value) + "\n";
      }
    }
    all += "\n";
  }
  const std::string golden = OSTRAND_SOURCE_DIR "/tests/places/cases/settings.txt";
  if (std::getenv("OSTRAND_RENEW_GOLDEN") != nullptr) std::ofstream(golden) << all;
  EXPECT_EQ(all, testing::ReadDisk(golden));
}

TEST(SettingsInWords, ListExactlyTheItemsInUse) {
  const auto store = NewStore();
  std::size_t items = 0;
  for (std::uint32_t seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    testing::MakeRandomProject(*store, seed);
    std::set<std::string> wanted;
    const auto want = [&](const char* item, int number, bool inUse) {
      if (inUse) wanted.insert(item + NumberText(number));
    };
    for (int t = 1; t <= kTables; ++t) want("Table ", t, store->Tables[t].TableOn != 0);
    for (int f = 1; f <= kFlags; ++f) want("Flag ", f, store->Flags[f].FlagInclude != 0);
    for (int p = 1; p < kPorts; ++p) want("Port ", p, store->Ports.Slot[0].Ports[p].Include != 0);
    for (int o = 1; o <= 2; ++o) {
      want("Analog output ", o, store->ExciteOut.Slot[0][o].Include != 0);
    }
    for (int i = 1; i <= store->Can.CanCount; ++i) want("CAN item ", i, true);
    for (int f = 1; f <= store->CalcFields.CalcFieldCount; ++f) {
      want("Calculated field ", f, true);
    }
    std::set<std::string> listed;
    const std::string text = ORVUS_GENFILE::ProjectFileText(*store, platform::Moment{});
    for (const PlaceSettings& place : SettingsInWords(text)) {
      EXPECT_FALSE(place.values.empty());
      EXPECT_EQ(place.place.find(", table"), std::string::npos) << place.place;
      const char last = place.place.back();
      const bool isItem = last >= '0' && last <= '9';
      EXPECT_TRUE(!isItem || listed.insert(place.place).second) << place.place;
    }
    EXPECT_EQ(listed, wanted);
    items += listed.size();
  }
  EXPECT_GT(items, 300U);
}

}  // namespace
}  // namespace ostrand
