#include "blocks/analog_list.h"

#include <algorithm>

#include "controls/edits.h"
#include "text/number.h"

namespace ostrand {

std::string FigureText(std::optional<int> figure) {
  return figure ? NumberText(*figure) : std::string("?");
}

AnalogList::AnalogList(const ScreenContext& context, const AnalogListKind& kind)
    : Screen(context, kind.name),
      Blocks(*this,
             {.setup = kind.setup,
              .open = [this](int block) { ShowSetup(block); },
              .max = kBlocks,
              .rows = kBlocks,
              .maxTyped = 1,
              .maxDigit = kBlocks,
              .maySpinUp = [this] { return maySpinUp(); },
              .mayType = [this](int) { return mayTypeMore(); },
              .sensors = [this](int block) { return int{Data(block).Reps}; },
              .add =
                  [this](int block) {
                    releaseRecords(block - 1);
                    makeObject(block);
                  },
              .remove =
                  [this](int block) {
                    releaseRecords(block - 1);
                    data_[block].reset();
                  },
              .changed = [this] { Refresh(); },
              .columns = {{"Reps", [this](int block) { return NumberText(int{Data(block).Reps}); }},
                          {"MeasType",
                           [this](int block) {
                             return std::string(Data(block).Analog()->InputTypeString());
                           }},
                          {"Range", [this](int block) { return Data(block).Analog()->InputRange; }},
                          {"Integration",
                           [this](int block) {
                             return NumberText(Data(block).Analog()->IntegTime());
                           }}}}),
      kind_(kind),
      names_(store()) {
  Caption = kind.caption;
}

void AnalogList::load() {
  guarded("Form_Load", [this] {
    const Loading loading(*this);
    countOnOpening_ = std::clamp<int>(storedCount(), 0, kBlocks);
    for (int b = 1; b <= countOnOpening_; ++b) {
      makeObject(b);
      objectFromRecord(b);
      recordFromObject(b);
    }
    keepBaseline();
    Blocks.Show(countOnOpening_);
    Refresh();
  });
}

void AnalogList::makeObject(int block) {
  data_[block] = std::make_unique<cOrvusData>(measurement());
  data_[block]->SetMode(kLoggerTypeVK7300, kind_.type, static_cast<i16>(block), 0);
}

std::span<RepAlias> AnalogList::Aliases(int block) {
  return AliasesOf(aliasRows(block), Data(block).Reps);
}

std::span<RepAlias> AnalogList::AliasRows(int block) { return AliasesOf(aliasRows(block), kReps); }

std::span<RepAlias> AnalogList::WrittenAliasRows(int block) { return aliasRows(block).Made(); }

std::vector<ChannelBlock> AnalogList::liveBlocks() const {
  std::vector<ChannelBlock> blocks;
  for (int b = 1; b <= Blocks.Count(); ++b) {
    blocks.push_back({.Reps = Data(b).Reps, .MeasType = Data(b).Analog()->InputTypeString()});
  }
  return blocks;
}

void AnalogList::Refresh() {
  Blocks.RefreshRows();
  showFigures();
}

bool AnalogList::ShowSetup(int block) {
  std::unique_ptr<cOrvusData> data = Data(block).Clone();
  const LateRow<RepAlias, 1, kReps> aliases = aliasRows(block);
  const auto output = std::make_unique<OutputSet>(Output(block));
  NamesBackup names(store());
  const std::size_t renamed = renamed_.size();
  const bool untouched = sameAsBaseline(block);
  AnalogSetupRequest request{*this, block};
  const std::unique_ptr<Screen> setup = MakeScreen(context(), kind_.setup, request);
  // A correction on opening is not an edit.
  if (untouched) takeAsBaseline(block);
  const bool accepted = OpenScreen(context(), setup);
  if (accepted) {
    names.Keep();
  } else {
    renamed_.resize(renamed);
    data_[block] = std::move(data);
    aliasRows(block) = aliases;
    Output(block) = *output;
    if (untouched) takeAsBaseline(block);
  }
  Refresh();
  return accepted;
}

bool AnalogList::edited() {
  if (Blocks.Count() != countOnOpening_) return true;
  for (int b = 1; b <= Blocks.Count(); ++b) {
    if (!sameAsBaseline(b)) return true;
  }
  return false;
}

bool AnalogList::sameAsBaseline(int block) {
  recordFromObject(block);
  return recordIsBaseline(block);
}

void AnalogList::takeAsBaseline(int block) {
  recordFromObject(block);
  keepBaseline(block);
}

bool AnalogList::onDone() {
  for (const AliasRenames& renames : renamed_) {
    for (int b = 1; b <= Blocks.Count(); ++b) RenameInLevels(Output(b), renames);
  }
  renamed_.clear();
  for (int b = 1; b <= Blocks.Count(); ++b) recordFromObject(b);
  storeRecords(Blocks.Count());
  StoreAutomaticStarts(store());
  names_.Keep();
  return true;
}

bool AnalogList::onCancel() {
  if (!edited()) return true;
  const platform::Answer answer = AskSaveEdits(Forms());
  if (answer == platform::Answer::kYes && onDone()) End(ModalResult::kDone);
  return answer == platform::Answer::kNo;
}

}  // namespace ostrand
