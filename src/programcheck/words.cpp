#include "programcheck/words.h"

#include <algorithm>

namespace ostrand {
namespace {

constexpr std::string_view kWords[] = {
    // instructions of measurement and output to the panel
    "BATTERY", "PANELTEMP", "TCSE", "TCDIFF", "VOLTSE", "VOLTDIFF", "BRFULL", "BRFULL6W", "BRHALF",
    "BRHALF3W", "BRHALF4W", "STRAINCALC", "PULSECOUNT", "PULSECOUNTRESET", "TK40M", "CANBUS",
    "EXCITECAO", "PORTSET", "READIO", "WRITEIO",
    // calibration in the field
    "LOADFIELDCAL", "FIELDCAL", "FIELDCALSTRAIN", "SAMPLEFIELDCAL", "NEWFIELDCAL",
    // tables
    "DATAINTERVAL", "DATAEVENT", "FILLSTOP", "CARDOUT", "FIELDNAMES", "SAMPLE", "MAXIMUM",
    "MINIMUM", "AVERAGE", "STDDEV", "TOTALIZE", "HISTOGRAM", "RAINFLOW", "LEVELCROSSING", "HDU7",
    // flow of the program
    "SLOWSEQUENCE", "READ", "DATA", "DELAY", "EXIT", "EXITSCAN", "EXITFOR", "EXITDO", "EXITSUB",
    "REALTIME", "POWEROFF", "AVGRUN", "TO", "STEP", "WHILE", "UNTIL",
    // functions
    "ABS", "ACOS", "ASIN", "ATN", "ATN2", "COS", "COSH", "CSGN", "EXP", "FIX", "FRAC", "IIF", "INT",
    "LOG", "LOG10", "SGN", "SIN", "SINH", "SQR", "TAN", "TANH",
    // operators and constants
    "AND", "OR", "NOT", "XOR", "MOD", "TRUE", "FALSE", "FP2", "IEEE4", "USEC", "MSEC", "SEC", "MIN",
    "HR", "DAY", "VX1", "VX2", "VX3", "VX4", "CAO1", "CAO2"};

}  // namespace

bool IsLanguageWord(std::string_view upperWord) {
  return std::find(std::begin(kWords), std::end(kWords), upperWord) != std::end(kWords);
}

bool IsLoggerTable(std::string_view upperName) {
  return upperName == "STATUS" || upperName == "PUBLIC";
}

}  // namespace ostrand
