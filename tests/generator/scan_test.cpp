// The channels of thermocouple and voltage blocks, automatic and set by hand.
#include "generator/generated.h"

namespace ostrand::testing {
namespace {

// Blocks as type and repetitions: "S3 D2 D0".
template <class Group>
void setBlocks(Group& group, std::string_view text, int firstStart) {
  group.BlockCount = 0;
  for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(3, text.size()))) {
    auto& block = group[++group.BlockCount];
    block.MeasType = text[0] == 'S' ? "SE" : text[0] == 'D' ? "Diff" : "Other";
    block.Reps = static_cast<i16>(text[1] - '0');
    block.StartChan = static_cast<i16>(firstStart + group.BlockCount - 1);
  }
}

// The channels of thermocouple and voltage statements in their order.
std::vector<int> channelsOf(const Lines& program) {
  std::vector<int> channels;
  for (const std::string& line : program) {
    if (!line.starts_with("      TC") && !line.starts_with("      Volt")) continue;
    channels.push_back(std::stoi(line.substr(line.find(',', line.find("RNG")) + 1)));
  }
  return channels;
}

TEST(ScanTest, ChannelsFollowTheirRules) {
  const struct {
    const char* temps;
    const char* volts;
    std::vector<int> automatic;  // channels of the blocks with repetitions
    std::vector<int> byHand;     // start channels are 11, 12, ... for temps, 31, 32, ... for volts
  } cases[] = {
      {"S3", "S3", {1, 4}, {1, 31}},
      {"S3", "D1", {1, 3}, {1, 31}},  // cursor 3 goes to 4
      {"D2 S3", "", {1, 5}, {11, 12}},
      {"S1 D2 S1", "", {1, 2, 7}, {1, 12, 13}},
      {"S1 S1 S2", "S1", {1, 2, 3, 5}, {1, 12, 13, 31}},
      {"D1 D2", "D1 S1 S1", {1, 2, 4, 9, 10}, {11, 12, 31, 32, 33}},
      {"S0 D1", "", {1}, {12}},  // a block without repetitions counts as the previous one
      {"D0 S2", "", {1}, {12}},
      {"O1 D1", "", {1, 2}, {1, 12}},  // unknown types take two terminals
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.temps) + " | " + c.volts);
    for (const bool automatic : {true, false}) {
      ProgramMaker maker;
      setBlocks(maker.store.TempBlock, c.temps, 11);
      setBlocks(maker.store.VoltBlock, c.volts, 31);
      maker.store.Config.AutoChan = automatic ? kTrue : kFalse;
      maker.MakeProgram();
      EXPECT_EQ(channelsOf(maker.program), automatic ? c.automatic : c.byHand);
    }
  }
}

}  // namespace
}  // namespace ostrand::testing
