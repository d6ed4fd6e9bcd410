#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class TK40MsTest : public Generated {
 protected:
  TK40MsTest() { store.Config.TK40MQty = 4; }
  TK40MBlockData& Block(int n, int reps, int volts) {
    store.TK40MBlock.BlockCount = static_cast<i16>(n);
    TK40MBlockData& block = store.TK40MBlock[n];
    block.Reps = static_cast<i16>(reps);
    block.TK40Volts = volts;
    block.ReverseMes = kFalse;
    return block;
  }
  // Multiplexer statements, the lines of zero subroutines included.
  [[nodiscard]] Lines Statements() const {
    Lines found;
    for (const std::string& line : program) {
      if (line.starts_with("      TK40M(")) found.push_back(line);
    }
    return found;
  }
};

TEST_F(TK40MsTest, ABlockGoesOnToTheNextMultiplexer) {
  Block(1, 10, 1);
  Block(2, 20, 0).ReverseMes = kTrue;
  Block(3, 45, 1).CalOnSite = 1;
  Run();
  ExpectRun(
      {"      '" + std::string(25, '_') + " TK40M Blocks " + std::string(25, '_'),
       "      TK40M(ABlk1(1),10,ARNG1,1,20,ATYPE1,TK40Ref(1),7,8,0,False,ASETL1,AINT1,AMULT1,"
       "AOSET1)",
       "      TK40M(ABlk2(1),15,ARNG2,11,20,ATYPE2,TK40Ref(1),7,8,VX4,True,ASETL2,AINT2,AMULT2,"
       "AOSET2)",
       "      TK40M(ABlk2(16),5,ARNG2,1,19,ATYPE2,TK40Ref(2),7,8,VX4,True,ASETL2,AINT2,AMULT2,"
       "AOSET2)",
       "      TK40M(ABlk3(1),20,ARNG3,6,19,ATYPE3,TK40Ref(2),7,8,0,False,ASETL3,AINT3,"
       "MABlk3(1)(),OABlk3(1)())",
       "      TK40M(ABlk3(21),25,ARNG3,1,18,ATYPE3,TK40Ref(3),7,8,0,False,ASETL3,AINT3,"
       "MABlk3(21)(),OABlk3(21)())",
       ""});
}

TEST_F(TK40MsTest, ABlockThatFillsAMultiplexerDoesNotSpill) {
  Block(1, 25, 0);
  Block(2, 1, 0);
  Run();
  const Lines statements = Statements();
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_TRUE(statements[0].starts_with("      TK40M(ABlk1(1),25,ARNG1,1,20,"));
  EXPECT_TRUE(statements[1].starts_with("      TK40M(ABlk2(1),1,ARNG2,1,19,ATYPE2,TK40Ref(2),"));
}

// The positions grow over runs; those of the buffer count the reserved zero line once, while the
// file has a line for each statement there.
TEST_F(TK40MsTest, ZeroLinesAndPositions) {
  Block(1, 30, 1).ZeroFlag = 4;
  Run();
  const std::string tail = ",7,8,0,False,ASETL1,AINT1,AMULT1,";
  ExpectRun({"      TK40M(ABlk1Zero(1),25,ARNG1,1,20,ATYPE1,TK40Ref(1)" + tail + "0)",
             "      TK40M(ABlk1Zero(26),5,ARNG1,1,19,ATYPE1,TK40Ref(2)" + tail + "0)",
             At66("      Count = Count + 1", "'Increment Count")});
  ExpectRun({"      TK40M(ABlk1(1),25,ARNG1,1,20,ATYPE1,TK40Ref(1)" + tail + "OABlk1(1)())",
             "      TK40M(ABlk1(26),5,ARNG1,1,19,ATYPE1,TK40Ref(2)" + tail + "OABlk1(26)())"});
  const std::string positions = generator.TK40MLines()[1];
  const int first = std::stoi(positions);
  EXPECT_EQ(positions, std::to_string(first) + " " + std::to_string(first + 1) + " ");
  EXPECT_TRUE(generator.Lines()[first].starts_with("      TK40M(ABlk1(1),25,"));
  Run();
  EXPECT_EQ(generator.TK40MLines()[1], positions + positions);
}

// Four statements for each block of 100: the fifteenth is the third of the fourth block.
TEST_F(TK40MsTest, MoreZeroStatementsThanAreKept) {
  for (int n = 1; n <= 5; ++n) Block(n, 100, 1).ZeroFlag = 1;
  ExpectFault(9, "Subscript out of range", "TK40Ms");
  Run();
  const Lines statements = Statements();
  EXPECT_EQ(statements.size(), 14U + 15U);
  EXPECT_TRUE(statements.back().starts_with("      TK40M(ABlk4(51),25,"));
  ExpectEnd();
}

}  // namespace
}  // namespace ostrand::testing
