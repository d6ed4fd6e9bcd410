#include "programcheck/program_check.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ostrand {
namespace {

std::string withLineEnds(const std::vector<const char*>& lines) {
  std::string text;
  for (const char* line : lines) text += std::string(line) + "\r\n";
  return text;
}

std::string told(const std::vector<ProgramFinding>& findings) {
  std::string text;
  for (const ProgramFinding& finding : findings) {
    text += std::to_string(finding.line) + ": " + finding.text + "\n";
  }
  return text;
}

TEST(ProgramCheck, FindsNothingInASoundProgram) {
  EXPECT_EQ(told(CheckProgram(withLineEnds({
                "' It's a comment with an If and a (",
                "Const PERIOD = 1E-05 'Scan",
                "Const VREP1 = 2",
                "Public VBlk1(VREP1), Gain : Dim I",
                "Public Tx(8),Rx(8)",
                "Public Loaded As Boolean",
                "Alias VBlk1(1) = Oil",
                "Alias  VBlk1(2)=M$Oil",
                "Units Oil = 1\" (pipe: new 'bars'",
                "Dim Levels(2)",
                "Data -1,2.5",
                "DataTable(Fast,True,-1)",
                "   Sample(1,Gain,FP2) : FieldNames(\"It's: a gain\")",
                "EndTable",
                "Sub Zero1",
                "   Gain = -fast.Oil_Avg(1,1)",
                "End Sub",
                "BEGINPROG",
                "   For i = 1 To VREP1",
                "      Read Levels(I)",
                "   Next I",
                "   Do",
                "   Do Until Tx(1): Loop",
                "   Scan(PERIOD,2,0,0)",
                "      If (GAIN <= 0) or (Gain = &HFF) Then Gain = 0 Else Gain = 1",
                "      If Loaded Then",
                "         Call Zero1",
                "      ElseIf Status.SkippedScan(1,1) > .5 Then",
                "         If Loaded Then CallTable Fast",
                "      Else",
                "         CallTable(FAST)",
                "      EndIf",
                "      M$Oil = IIF(Fast.Record(1,0) >= Fast.TableSize(1,1),True,False)",
                "      FileMark(Fast)",
                "   NextScan",
                "   Loop",
                "EndProg",
            }))),
            "");
}

struct BrokenCase {
  const char* name;
  std::vector<const char*> lines;  // inside BeginProg of line 1 and EndProg
  const char* findings;
};

class BrokenProgram : public ::testing::TestWithParam<BrokenCase> {};

TEST_P(BrokenProgram, IsTold) {
  std::vector<const char*> lines = {"BeginProg"};
  lines.insert(lines.end(), GetParam().lines.begin(), GetParam().lines.end());
  lines.push_back("EndProg");
  EXPECT_EQ(told(CheckProgram(withLineEnds(lines))), GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, BrokenProgram,
    ::testing::ValuesIn(std::vector<BrokenCase>{
        {"OpenFor",
         {"Dim I", "For I = 1 To 2"},
         "4: EndProg while the For of line 3 is still open\n"},
        {"NextOfAnother",
         {"Dim I,J", "For I = 1 To 2", "Next J"},
         "4: Next J closes the For I of line 3\n"},
        {"NextScanAlone", {"Next Scan"}, "2: Next Scan without Scan\n"},
        {"Crossed",
         {"Dim I", "Scan(1,Sec,0,0)", "For I = 1 To 2", "Next Scan", "Next I"},
         "5: Next Scan while the For of line 4 is still open\n6: Next without For\n"},
        {"OpenIf",
         {"If True Then 'what follows"},
         "3: EndProg while the If of line 2 is still open\n"},
        {"EndOfOneLineIf", {"If True Then ExitScan", "End If"}, "3: End If without If\n"},
        {"ElseTwice", {"If True Then", "Else", "Else", "EndIf"}, "4: Else behind Else\n"},
        {"ElseIfLast",
         {"If True Then", "Else", "ElseIf True Then", "EndIf"},
         "4: ElseIf behind Else\n"},
        {"NoThen", {"If True", "End If"}, "2: If without Then\n"},
        {"LoopAlone", {"Do Until True: Loop", "Loop"}, "3: Loop without Do\n"},
        {"TableInside",
         {"DataTable(T,True,1)", "EndTable"},
         "2: DataTable stands inside the BeginProg of line 1\n"},
        {"SubInside", {"Sub S", "End Sub"}, "2: Sub stands inside the BeginProg of line 1\n"},
        {"SecondProgram", {"EndProg", "BeginProg"}, "3: BeginProg stands a second time\n"},
        {"Undeclared",
         {"Public A(N)", "A(1) = B + b", "A(1) = Abs(C)"},
         "2: N is not declared\n3: B is not declared\n4: C is not declared\n"},
        {"NameInComment", {"'Public A", "A = 1"}, "3: A is not declared\n"},
        {"UnitsOfNothing", {"Units A = B"}, "2: A is not declared\n"},
        {"AliasOfNothing", {"Alias A(1) = B", "B = 1"}, "2: A is not declared\n"},
        {"AliasWithSubscript",
         {"Public A(2)", "Alias A(1) = M$A(1)"},
         "3: the alias M$A is not a plain name\n"},
        {"NameBehindNumber", {"Const N = 2x"}, "2: x is not declared\n"},
        {"NoTable", {"Public T", "CallTable T"}, "3: no table is named T\n"},
        {"NoTableInParentheses", {"CallTable(T)"}, "2: no table is named T\n"},
        {"NoTableBehindThen", {"If True Then CallTable T"}, "2: no table is named T\n"},
        {"NoTableForField", {"Public A", "A = T.A_Avg(1,1)"}, "3: no table is named T\n"},
        {"NoTableToMark", {"FileMark(T)"}, "2: no table is named T\n"},
        {"TableWithoutName", {"CallTable"}, "2: CallTable without a name\n"},
        {"NoSub", {"Call S"}, "2: no Sub is named S\n"},
        {"DeclaredTwice",
         {"Dim A", "Const a = 1", "Public B,A", "Dim C(2)", "Alias C(1) = B"},
         "3: a is declared a second time\n4: A is declared a second time\n"
         "6: B is declared a second time\n"},
        {"VariableWithoutName", {"Public A,", "A = 1"}, "2: Public without a name\n"},
        {"OpenParenthesis", {"Public A(2"}, "2: the parentheses do not match\n"},
        {"CrossedParentheses", {"Dim A", "A = )1("}, "3: the parentheses do not match\n"},
        {"OpenQuote",
         {"FieldNames(\"A\") : FieldNames(\"B)"},
         "2: a text in double quotes is not closed\n2: the parentheses do not match\n"},
        {"Tabulator", {"Dim A\t'x"}, "2: the line holds a control character\n"},
        {"ReturnInside", {"Dim A 'x\ry"}, "2: the line holds a control character\n"},
        {"LineFeedOnly", {"Dim A\nDim B"}, "2: the line does not end in CR LF\n"},
    }),
    [](const auto& broken) { return std::string(broken.param.name); });

TEST(ProgramCheck, TellsOfAWholeThatIsCutShort) {
  EXPECT_EQ(told(CheckProgram("")), "1: there is no BeginProg\n");
  EXPECT_EQ(told(CheckProgram("Sub S\r\nBeginProg\r\nEndPro")),
            "1: Sub is never closed with End Sub\n2: BeginProg stands inside the Sub of line 1\n"
            "2: BeginProg is never closed with EndProg\n3: the line does not end in CR LF\n"
            "3: EndPro is not declared\n");
}

// Whatever it is given, the check ends.
TEST(ProgramCheck, TakesEveryCutOfAProgram) {
  const std::string program =
      withLineEnds({"Public A(2), \"B As", "Alias A(1) =", "For", "Next", "DataTable(",
                    "If Then : Else", "End", "Units", "Call(", "A.", ".5.&H & 1E 1E+", "Dim",
                    "FileMark", "CallTable(\"A\")", "\xE4\xFF"});
  for (std::size_t from = 0; from < program.size(); ++from) {
    for (std::size_t length = 0; length <= program.size() - from; ++length) {
      EXPECT_FALSE(CheckProgram(std::string_view(program).substr(from, length)).empty());
    }
  }
}

}  // namespace
}  // namespace ostrand
