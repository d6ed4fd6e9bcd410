#include "conditions/conditions.h"

#include <algorithm>

#include "controls/numeric_field.h"
#include "model/names_in_text.h"
#include "model/variables.h"
#include "platform/box.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kNone = "(None)";
constexpr std::string_view kTrueWord = "True";
constexpr std::string_view kFalseWord = "False";
constexpr std::array<std::string_view, 1> kLogicCompares = {" = "};
constexpr double kMostSingle = 3.402e38;
constexpr int kSingleDigits = 7;

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

bool startsWith(std::string_view text, std::string_view head) {
  return SameText(text.substr(0, head.size()), head);
}

// Kinds whose values are elements of a block's array.
bool isOfBlock(i32 kind) {
  return kind == kTempVariables || kind == kVoltVariables || kind == kBridgeVariables ||
         kind == kPulseVariables || kind == kTK40MVariables;
}

// "True" or "False" for a text that is one of them in any case; empty for any other.
std::string_view logicWord(std::string_view text) {
  for (const std::string_view word : {kTrueWord, kFalseWord}) {
    if (SameText(text, word)) return word;
  }
  return {};
}

bool isHeadOfLogicWord(std::string_view text) {
  return startsWith(kTrueWord, text) || startsWith(kFalseWord, text);
}

bool valueInTheMaking(std::string_view text) {
  return SingleText(text) || (text.size() <= kFalseWord.size() && isHeadOfLogicWord(text));
}

// The value that a row shows. Rows without a text of their own for it have it in their expression.
std::string valueOf(const ConditionRow& row) {
  if (!Trim(row.Varb).empty()) return std::string(Trim(row.Varb));
  if (!IsLogicVariable(row.MeasVar)) return SignificantText(DecimalValue(row.Value), kSingleDigits);
  const std::string_view expression = Trim(row.Expression);
  const std::size_t blank = expression.rfind(' ');
  const std::string_view last =
      blank == std::string_view::npos ? expression : expression.substr(blank + 1);
  return std::string(logicWord(last).empty() ? kTrueWord : logicWord(last));
}

}  // namespace

// --- Names ---------------------------------------------------------------------------------------

ConditionVariables::ConditionVariables(const ProjectStore& store, std::span<const i32> kinds) {
  const VarPickList available(store);
  all_.reserve(available.Variables().size());
  for (const PickVariable& variable : available.Variables()) {
    all_.push_back({std::string(Trim(variable.name)),
                    isOfBlock(variable.kind) ? variable.element : std::string()});
  }
  const VarPickList listed(store, kinds);
  const VarPickList& shown = kinds.empty() ? available : listed;
  names_.reserve(shown.Variables().size());
  for (const PickVariable& variable : shown.Variables()) {
    names_.emplace_back(Trim(variable.name));
  }
}

int ConditionVariables::Find(std::string_view name) const {
  const std::string wanted = Variable(Trim(name));
  const auto at = std::find_if(names_.begin(), names_.end(), [&](const std::string& candidate) {
    return SameText(Variable(candidate), wanted);
  });
  return at == names_.end() ? -1 : static_cast<int>(at - names_.begin());
}

std::optional<std::string> ConditionVariables::elementOf(std::string_view name) const {
  for (const Entry& entry : all_) {
    if (!entry.element.empty() && SameText(entry.name, name)) return entry.element;
  }
  return std::nullopt;
}

std::string ConditionVariables::Variable(std::string_view name) const {
  return elementOf(name).value_or(std::string(name));
}

std::string ConditionVariables::InVariables(std::string_view expression) const {
  return ReplaceNames(expression,
                      [this](const NameInText& name) { return elementOf(name.Text()); });
}

std::string ConditionVariables::InAliases(std::string_view expression) const {
  return ReplaceNames(expression, [this](const NameInText& name) -> std::optional<std::string> {
    const std::string element = name.Text();
    for (const Entry& entry : all_) {
      if (!entry.element.empty() && SameText(entry.element, element)) return entry.name;
    }
    return std::nullopt;
  });
}

// --- Rows ----------------------------------------------------------------------------------------

bool IsLogicVariable(std::string_view name) {
  return startsWith(name, "Flag(") || startsWith(name, "ReadPort");
}

int FlagOfVariable(std::string_view name) {
  if (!startsWith(name, "Flag(")) return 0;
  const auto number = static_cast<int>(Val(name.substr(5, 2)));
  return number >= 1 && number <= kFlags ? number : 0;
}

std::string ConditionText(std::string_view measurement, Compares compares, int compare,
                          std::string_view value) {
  std::string_view sign = "=";
  if (!IsLogicVariable(measurement)) {
    const bool known = compare >= 0 && compare < static_cast<int>(compares.size());
    sign = Trim(compares[known ? static_cast<std::size_t>(compare) : 0]);
  }
  std::string text(Trim(measurement));
  return text.append(" ").append(sign).append(" ").append(value);
}

ConditionValue::ConditionValue(Screen& screen, std::string_view name)
    : ListField(screen, name, valueInTheMaking) {
  MayHold = [this](std::string_view text) { return !LogicOnly || isHeadOfLogicWord(text); };
}

bool ConditionValue::normalize(std::string& text) {
  const std::string_view word = logicWord(Trim(text));
  if (!word.empty() || LogicOnly) {
    text = word;
    return !word.empty();
  }
  if (ItemIndex() >= 0) return true;
  const std::optional<double> value = ToDouble(text);
  if (!value) return false;
  text = SignificantText(std::clamp(*value, -kMostSingle, kMostSingle), kSingleDigits);
  return true;
}

ConditionControls::ConditionControls(Screen& screen, const ConditionVariables& variables,
                                     const ConditionControlNames& names,
                                     const ConditionOffer& offer)
    : MeasVar(screen, names.measurement),
      Compare(screen, names.compare),
      Value(screen, names.value),
      Expression(screen, names.expression),
      variables_(variables),
      offer_(offer) {
  MeasVar.OnPick = [this] { onPickMeasurement(); };
  Compare.OnPick = [this] {
    if (!setting_) edit();
  };
  Value.OnTake = [this] { edit(); };
  Clear();
}

// Lists the measurements, with one of them picked. One that is no longer available is listed last,
// so that a row that is only looked at loses nothing.
void ConditionControls::showMeasurement(std::string_view name) {
  MeasVar.Items.clear();
  MeasVar.Items.reserve(variables_.Names().size() + 2);
  MeasVar.Items.push_back({std::string(kNone), true, true, {}});
  for (const std::string& listed : variables_.Names()) {
    MeasVar.Items.push_back({listed, true, true, {}});
  }
  int place = 0;
  if (!name.empty()) {
    place = variables_.Find(name) + 1;
    if (place == 0) {
      place = static_cast<int>(MeasVar.Items.size());
      MeasVar.Items.push_back({std::string(name), true, true, {}});
    }
  }
  MeasVar.Index(place);
  picked_ = place;
}

// Lists what the kind of the measurement can be compared with.
void ConditionControls::showKind(bool logic) {
  const Compares compares = logic ? Compares(kLogicCompares) : offer_.compares;
  Compare.Items.clear();
  for (const std::string_view sign : compares) {
    Compare.Items.push_back({std::string(sign), true, true, {}});
  }
  Compare.Index(-1);
  Value.LogicOnly = logic;
  Value.Items.clear();
  if (logic) {
    Value.Items = {std::string(kTrueWord), std::string(kFalseWord)};
  } else if (offer_.variablesAsValues) {
    Value.Items = variables_.Names();
  }
}

void ConditionControls::Load(const ConditionRow& row) {
  setting_ = true;
  row_ = row;
  // A row of an older project has its expression alone.
  const std::string_view measurement = Trim(row.MeasVar).empty() ? row.Expression : row.MeasVar;
  showMeasurement(Trim(measurement));
  Compare.Items.clear();
  Compare.Index(-1);
  Value.Items.clear();
  Value.Text({});
  Expression.Text({});
  if (Valid()) {
    const bool logic = IsLogicVariable(MeasVar.Text());
    showKind(logic);
    Compare.Index(logic ? 0 : row.Compare);
    Value.Text(variables_.InAliases(valueOf(row)));
    Expression.Text(variables_.InAliases(row.Expression));
  }
  enableControls();
  setting_ = false;
}

void ConditionControls::Clear() {
  ConditionRow empty;
  empty.Compare = offer_.firstCompare;
  Load(empty);
}

void ConditionControls::Enable(bool enabled) {
  enabled_ = enabled;
  enableControls();
}

void ConditionControls::enableControls() {
  MeasVar.Enabled = enabled_;
  Compare.Enabled = Value.Enabled = enabled_ && Valid();
}

void ConditionControls::onPickMeasurement() {
  if (setting_ || MeasVar.Index() == picked_) return;
  if (AllowPick && !AllowPick()) {
    setting_ = true;
    MeasVar.Index(picked_);
    setting_ = false;
    return;
  }
  picked_ = MeasVar.Index();
  if (!Valid()) {
    Clear();
    if (OnEdit) OnEdit();
    return;
  }
  setting_ = true;
  const bool logic = IsLogicVariable(MeasVar.Text());
  const bool sameKind = !Compare.Items.empty() && Value.LogicOnly == logic;
  if (!sameKind) {
    showKind(logic);
    Compare.Index(logic ? 0 : offer_.firstCompare);
    Value.Text(logic ? kTrueWord : "0");
  }
  enableControls();
  setting_ = false;
  edit();
}

void ConditionControls::edit() {
  if (!Valid()) return;
  const std::string value = Value.Text();
  const bool isNumber = ToDouble(value).has_value();
  row_.MeasVar = MeasVar.Text();
  row_.Compare = std::max(Compare.Index(), 0);
  row_.Varb = isNumber ? std::string() : value;
  row_.VarIdx = isNumber ? 0 : std::max(Value.ItemIndex(), 0);
  row_.Value = isNumber ? ToSingle(value).value_or(0) : 0;
  row_.Expression = ConditionText(variables_.Variable(row_.MeasVar), offer_.compares, row_.Compare,
                                  variables_.Variable(value));
  Expression.Text(variables_.InAliases(row_.Expression));
  if (OnEdit) OnEdit();
}

ConditionRow ConditionControls::Stored() const {
  ConditionRow row = row_;
  row.Expression = variables_.InVariables(row.Expression);
  return row;
}

// --- Groups --------------------------------------------------------------------------------------

namespace {

constexpr std::string_view kSyntaxTitle = "GROUPING SYNTAX ERROR";

// Reads a grouping line from left to right up to its first fault.
class GroupingReader {
 public:
  GroupingReader(std::string_view line, int lastRow) : line_(line), lastRow_(lastRow) {}

  std::optional<GroupingFault> Read() {
    while (!fault_ && at_ < line_.size()) next();
    if (!fault_ && open_ != 0) mismatch();
    if (!fault_ && last_ == Last::kWord) syntax(at_);
    return fault_;
  }

 private:
  enum class Last { kNothing, kNumber, kOpen, kClose, kWord };

  void next() {
    const char letter = line_[at_];
    if (isDigit(letter)) return number();
    switch (letter) {
      case ' ':
        ++at_;
        return;
      case '(':
        ++open_;
        return take(Last::kOpen);
      case ')':
        return close();
      case 'A':
      case 'a':
        return word("AND", "GROUPING SYNTAX ERROR - A");
      case 'O':
      case 'o':
        return word("OR", "GROUPING SYNTAX ERROR - O");
      default:
        return syntax(at_);
    }
  }

  void take(Last what) {
    last_ = what;
    ++at_;
  }

  void close() {
    if (open_ == 0) return mismatch();
    if (last_ == Last::kOpen || last_ == Last::kWord) return syntax(at_);
    --open_;
    take(Last::kClose);
  }

  void number() {
    if (joinable_) {
      return fail("TWO NUMBER TOGETHER WITHOUT LOGIC ERROR", "A syntax error was found", at_);
    }
    int value = 0;
    for (; at_ < line_.size() && isDigit(line_[at_]); ++at_) {
      value = std::min(value * 10 + (line_[at_] - '0'), 1000);
    }
    if (value < 1 || value > lastRow_) {
      fault_ = {"CONDITION NUMBER RANGE ERROR",
                "Only condition numbers from 1 to the last valid condition may be grouped "
                "(1-10 maximum)."};
    }
    last_ = Last::kNumber;
    joinable_ = true;
  }

  void word(std::string_view spelling, std::string_view title) {
    if (last_ != Last::kNumber && last_ != Last::kClose) {
      const std::string what = std::string("A syntax error with '") + spelling[0] + "' was found";
      return fail(title, what, at_);
    }
    for (std::size_t i = 1; i < spelling.size(); ++i) {
      ++at_;
      if (at_ < line_.size() && SameText(line_.substr(at_, 1), spelling.substr(i, 1))) continue;
      const std::string letter(1, spelling[i]);
      return fail(titleOfMissing(spelling[i]), "A syntax error (no '" + letter + "') was found",
                  at_);
    }
    joinable_ = false;
    take(Last::kWord);
  }

  static std::string_view titleOfMissing(char letter) {
    if (letter == 'N') return "GROUPING SYNTAX ERROR - N";
    return letter == 'D' ? "GROUPING SYNTAX ERROR - D" : "GROUPING SYNTAX ERROR - R";
  }

  void syntax(std::size_t at) { fail(kSyntaxTitle, "A syntax error was found", at); }

  void mismatch() {
    fault_ = {"MISMATCHED PARENTHESES",
              "The parentheses in the condition groupings are not matched correctly"};
  }

  void fail(std::string_view title, std::string_view what, std::size_t at) {
    fault_ = {title, std::string(what) + " at character number " +
                         NumberText(static_cast<std::int64_t>(at) + 1)};
  }

  std::string_view line_;
  int lastRow_;
  std::size_t at_ = 0;
  int open_ = 0;
  Last last_ = Last::kNothing;
  bool joinable_ = false;  // a number stands to the left that a word has to join to the next one
  std::optional<GroupingFault> fault_;
};

}  // namespace

std::optional<GroupingFault> FindGroupingFault(std::string_view line, int lastRow) {
  return GroupingReader(line, lastRow).Read();
}

std::string DefaultGrouping(int rows) {
  std::string line = "1";
  for (int n = 2; n <= rows; ++n) line += " OR " + NumberText(n);
  return line;
}

std::string StoredGrouping(std::string_view line, int rows) {
  const std::string upper = Upper(Trim(line));
  if (upper.empty() || rows < 1) return DefaultGrouping(rows);
  const auto isLetter = [](char letter) { return letter >= 'A' && letter <= 'Z'; };
  std::string stored;
  for (std::size_t at = 0; at < upper.size(); ++at) {
    const char letter = upper[at];
    const char previous = stored.empty() ? ' ' : stored.back();
    if (previous != ' ' && isLetter(letter) != isLetter(previous) && letter != ' ') stored += ' ';
    const bool leading = letter == '0' && !isDigit(previous);
    const bool more = at + 1 < upper.size() && isDigit(upper[at + 1]);
    if (leading && more) continue;
    stored += letter;
  }
  return stored;
}

std::string ExpandGrouping(std::string_view line, std::span<const std::string> rows, RowForm form) {
  const bool enclose = form == RowForm::kInParentheses;
  std::string text;
  for (std::size_t at = 0; at < line.size();) {
    if (!isDigit(line[at])) {
      text += line[at++];
      continue;
    }
    const std::size_t first = at;
    std::size_t number = 0;
    for (; at < line.size() && isDigit(line[at]); ++at) {
      number = std::min<std::size_t>(number * 10 + static_cast<std::size_t>(line[at] - '0'), 1000);
    }
    if (number < 1 || number > rows.size()) {
      text += line.substr(first, at - first);
    } else {
      const std::string& row = rows[number - 1];
      text += enclose ? "(" + row + ")" : row;
    }
  }
  return text;
}

ConditionSet::Rows ConditionSet::makeRows(Screen& screen, const ConditionVariables& variables,
                                          const Names& names, int firstCompare) {
  const ConditionOffer offer{
      .compares = kTriggerCompares, .variablesAsValues = true, .firstCompare = firstCompare};
  Rows rows;
  for (int n = 1; n <= kConditions; ++n) {
    rows[n] = std::make_unique<ConditionControls>(screen, variables, names.row(n), offer);
  }
  return rows;
}

ConditionSet::ConditionSet(Screen& screen, const ConditionVariables& variables, const Names& names,
                           int firstCompare)
    : rows_(makeRows(screen, variables, names, firstCompare)),
      Grouping(screen, names.grouping),
      Expression(screen, names.expression),
      screen_(screen),
      variables_(variables),
      firstCompare_(firstCompare) {
  for (int n = 1; n <= kConditions; ++n) {
    rows_[n]->AllowPick = [this, n] { return allowPick(n); };
    rows_[n]->OnEdit = [this] { onEdit(); };
  }
  Grouping.Accept = [this](std::string& line) { return acceptGrouping(line); };
  Grouping.OnTake = [this] { onEdit(); };
}

void ConditionSet::Load(std::span<const ConditionRow> rows, int count, std::string_view grouping) {
  const auto used = static_cast<std::size_t>(std::clamp(count, 0, kConditions));
  for (int n = 1; n <= kConditions; ++n) {
    const auto place = static_cast<std::size_t>(n - 1);
    rows_[n]->Load(place < std::min(used, rows.size()) ? rows[place] : ConditionRow{});
  }
  grouped_ = Count();
  Grouping.Text(StoredGrouping(grouping, grouped_));
  Grouping.Enabled = enabled_ && grouped_ > 0;
  Expression.Text(InAliases());
}

void ConditionSet::Enable(bool enabled) {
  enabled_ = enabled;
  for (const auto& row : rows_) row->Enable(enabled);
  Grouping.Enabled = enabled && Count() > 0;
}

int ConditionSet::Count() const {
  int count = 0;
  while (count < kConditions && rows_[count + 1]->Valid()) ++count;
  return count;
}

ConditionRow ConditionSet::Stored(int n) const {
  if (n <= Count()) return rows_[n]->Stored();
  ConditionRow empty;
  empty.Compare = firstCompare_;
  return empty;
}

std::string ConditionSet::expanded(bool aliases) const {
  const int count = Count();
  if (count == 0) return {};
  std::vector<std::string> rows;
  for (int n = 1; n <= count; ++n) {
    const std::string row = Stored(n).Expression;
    rows.push_back(aliases ? variables_.InAliases(row) : row);
  }
  return ExpandGrouping(StoredLine(), rows, RowForm::kInParentheses);
}

bool ConditionSet::Check() {
  std::string line = Grouping.Text();
  return acceptGrouping(line);
}

void ConditionSet::View(std::string_view title, std::string text) {
  if (!Check()) return;
  platform::MessageBox box;
  box.title = title;
  box.text = std::move(text);
  screen_.Forms().ShowBox(box);
}

bool ConditionSet::acceptGrouping(std::string& line) {
  const int count = Count();
  if (count == 0) return true;
  if (const auto fault = FindGroupingFault(line, count)) {
    tell(fault->title, fault->text);
    return false;
  }
  if (InVariables().size() > kMostExpression) {
    tell("EXPRESSION TOO LONG", JoinLines({"The total length for a conditional logic expression",
                                           "may not exceed 490 characters. This size limit is",
                                           "based on the expression size after alias names have",
                                           "been replaced with their actual variable names."}));
    return false;
  }
  line = StoredGrouping(line, count);
  return true;
}

// Rows are filled from the first on, and emptying one empties those behind it.
bool ConditionSet::allowPick(int n) {
  if (rows_[n]->Valid()) {
    for (int before = 1; before < n; ++before) {
      if (rows_[before]->Valid()) continue;
      tell("CONDITION SETUP ERROR", "You must create your conditions in ascending order.");
      return false;
    }
    const int flagNumber = FlagOfVariable(rows_[n]->MeasVar.Text());
    if (flagNumber > 0 && OnFlag) OnFlag(flagNumber);
    return true;
  }
  if (n == kConditions || !rows_[n + 1]->Valid()) return true;
  const auto answer = Ask(screen_.Forms(), "CONFIRM CONDITION REMOVAL",
                          "Each valid condition after the first empty condition will be removed. "
                          "Continue?",
                          platform::Buttons::kYesNo);
  if (answer != platform::Answer::kYes) return false;
  for (int behind = n + 1; behind <= kConditions; ++behind) rows_[behind]->Clear();
  return true;
}

void ConditionSet::onEdit() {
  renewGrouping();
  Expression.Text(InAliases());
  if (OnEdit) OnEdit();
}

// A line that joins all rows by OR goes on to do so. One of the user's own stays as long as it
// names only rows that are there.
void ConditionSet::renewGrouping() {
  const int count = Count();
  Grouping.Enabled = enabled_ && count > 0;
  if (count == grouped_) return;
  const std::string line = Grouping.Text();
  const bool isDefault = SameText(Trim(line), DefaultGrouping(grouped_));
  if (isDefault || count == 0 || FindGroupingFault(line, count)) {
    Grouping.Text(DefaultGrouping(count));
  }
  grouped_ = count;
}

void ConditionSet::tell(std::string_view title, std::string text) {
  ShowWarning(screen_.Forms(), title, std::move(text));
}

}  // namespace ostrand
