// The list of blocks on analog inputs: common part of the screens of thermocouple, voltage and
// multiplexer blocks.
#pragma once

#include <memory>
#include <span>
#include <utility>

#include "blocks/analog_record.h"
#include "blocks/block_list.h"
#include "blocks/frm_graphs.h"
#include "conditions/names_backup.h"
#include "conditions/screen_requests.h"
#include "controls/screen.h"
#include "model/channel_chart.h"
#include "model/channels.h"
#include "model/orvus_data.h"

namespace ostrand {

// What differs between the three screens.
struct AnalogListKind {
  std::string_view name;   // of the screen
  std::string_view setup;  // of the screen that edits a block
  std::string_view caption;
  std::string_view plural;  // in the caption of a block's setup
  OrvusDataObjTypes type;
};

class AnalogList;

// A block of a list, whose setup is opened. The list must outlive it.
struct AnalogSetupRequest {
  AnalogList& list;
  int block;  // from 1
};

// The blocks are edited as copies: a setup screen changes them at once, so that figures and rows
// follow, and Done stores them in the project. Cancel leaves the project unchanged.
class AnalogList : public Screen {
 public:
  BlockList Blocks;

  [[nodiscard]] const AnalogListKind& Kind() const { return kind_; }

  // The object of a block, 1 to the count, and the rows of its repetitions.
  [[nodiscard]] cOrvusData& Data(int block) { return *data_[block]; }
  [[nodiscard]] const cOrvusData& Data(int block) const { return *data_[block]; }
  [[nodiscard]] std::span<RepAlias> Aliases(int block);
  // All possible rows of a block.
  [[nodiscard]] std::span<RepAlias> AliasRows(int block);
  // The rows written so far; the others equal those of an unused block.
  [[nodiscard]] std::span<RepAlias> WrittenAliasRows(int block);
  // Sensors were renamed; Done applies the names to the blocks of the list.
  void Renamed(const AliasRenames& renames) { renamed_.push_back(renames); }
  // The table outputs of a block.
  [[nodiscard]] virtual OutputSet& Output(int block) = 0;

  // Sensors that can still be added to a block of that type; negative for too many, -1 also when
  // nothing limits them here.
  [[nodiscard]] virtual int ChannelsAvailable(OrvusAnalogInputTypes type) const = 0;

  // The start channel of a block when channels are selected automatically.
  [[nodiscard]] virtual int StartOf(int block) const = 0;

  // Updates rows and figures from the blocks.
  void Refresh();

  // Edits a block; true after Done. Any other way out undoes the edits.
  bool ShowSetup(int block);

 protected:
  AnalogList(const ScreenContext& context, const AnalogListKind& kind);

  // Loads the project's blocks; last call of a constructor.
  void load();
  [[nodiscard]] const MeasurementOptions& measurement() const {
    return context().options.Measurement;
  }
  // The blocks as the panel's rules use them.
  [[nodiscard]] std::vector<ChannelBlock> liveBlocks() const;

  virtual void showFigures() = 0;
  // Whether one more block fits: for the spin button, and for keys.
  [[nodiscard]] virtual bool maySpinUp() const = 0;
  [[nodiscard]] virtual bool mayTypeMore() const = 0;

  // The project's group, or its copy with the members that the objects lack.
  [[nodiscard]] virtual int storedCount() const = 0;
  virtual void objectFromRecord(int block) = 0;
  virtual void recordFromObject(int block) = 0;
  virtual void releaseRecords(int first) = 0;
  [[nodiscard]] virtual LateRow<RepAlias, 1, kReps>& aliasRows(int block) = 0;
  // The unedited state of the blocks: sets it to all records as they are now, or to that of one
  // block.
  virtual void keepBaseline() = 0;
  virtual void keepBaseline(int block) = 0;
  [[nodiscard]] virtual bool recordIsBaseline(int block) const = 0;
  // Writes the records into the project.
  virtual void storeRecords(int count) = 0;

  bool onDone() override;
  bool onCancel() override;

 private:
  void makeObject(int block);
  [[nodiscard]] bool edited();
  // Both read the block's object, which its record takes over.
  [[nodiscard]] bool sameAsBaseline(int block);
  void takeAsBaseline(int block);

  AnalogListKind kind_;
  Row<std::unique_ptr<cOrvusData>, 1, kBlocks> data_;
  int countOnOpening_ = 0;
  NamesBackup names_;                  // a renamed sensor is renamed in the project too,
  std::vector<AliasRenames> renamed_;  // and on Done in the blocks of this list
};

// A figure of free channels; "?" for no value.
std::string FigureText(std::optional<int> figure);

// A list over one group of the store.
template <class Group>
class AnalogGroupList : public AnalogList {
 protected:
  using Member = Group ProjectStore::*;
  using Release = void (*)(Group& group, int first);

  AnalogGroupList(const ScreenContext& context, const AnalogListKind& kind, Member member,
                  Release release)
      : AnalogList(context, kind),
        member_(member),
        release_(release),
        records_(std::make_unique<Group>(context.store.*member)) {}

  [[nodiscard]] Group& project() const { return store().*member_; }
  [[nodiscard]] Group& records() { return *records_; }

  [[nodiscard]] int storedCount() const override { return project().BlockCount; }
  void objectFromRecord(int block) override { ObjectFromBlock(Data(block), (*records_)[block]); }
  void recordFromObject(int block) override { BlockFromObject((*records_)[block], Data(block)); }
  void releaseRecords(int first) override { release_(*records_, first); }
  LateRow<RepAlias, 1, kReps>& aliasRows(int block) override { return (*records_)[block].Alias; }
  OutputSet& Output(int block) override { return (*records_)[block].Output; }
  void keepBaseline() override { baseline_ = std::make_unique<Group>(*records_); }
  void keepBaseline(int block) override { (*baseline_)[block] = (*records_)[block]; }
  [[nodiscard]] bool recordIsBaseline(int block) const override {
    return SameBlock((*baseline_)[block], (*records_)[block]);
  }
  void storeRecords(int count) override {
    records_->BlockCount = static_cast<i16>(count);
    release_(*records_, count);
    project() = *records_;
  }

 private:
  Member member_;
  Release release_;
  std::unique_ptr<Group> records_;
  std::unique_ptr<Group> baseline_;
};

// The blocks of a kind in the chart of the panel.
struct PanelPlace {
  std::vector<ChannelBlock> ChartBlocks::*blocks;
  Row<int, 1, kBlocks> StartChans::*starts;
};

// A list whose blocks are on the panel itself.
template <class Group>
class PanelList : public AnalogGroupList<Group> {
 public:
  Label FreeSE;    // single-ended channels, "?" when they are selected by hand
  Label FreeDiff;  // differential ones
  ChartOpener Chart;

  [[nodiscard]] int ChannelsAvailable(OrvusAnalogInputTypes type) const override {
    return ostrand::ChannelsAvailable(type, autoChan(), free());
  }
  [[nodiscard]] int StartOf(int block) const override {
    const int start = (AutomaticStartChans(chart()).*place_.starts)[block];
    return start >= 1 ? start : this->Data(block).StartChannel;
  }

 protected:
  PanelList(const ScreenContext& context, const AnalogListKind& kind,
            typename AnalogGroupList<Group>::Member member,
            typename AnalogGroupList<Group>::Release release, const PanelPlace& place)
      : AnalogGroupList<Group>(context, kind, member, release),
        FreeSE(*this, "FreeSE"),
        FreeDiff(*this, "FreeDiff"),
        Chart(*this),
        place_(place) {
    Describe(*this, kFreeChannelFaces);
    Chart.OnPress = [this] {
      LogGraphRequest request{chart(), startsByHand()};
      OpenScreen(this->context(), Chart.Opens(), request);
    };
  }

  void showFigures() override {
    const FreeFigures figures = FreeChannelFigures(autoChan(), free());
    FreeSE.Text(FigureText(figures.singleEnded));
    FreeDiff.Text(FigureText(figures.differential));
  }
  [[nodiscard]] bool maySpinUp() const override { return ofNewBlock() != 0; }
  [[nodiscard]] bool mayTypeMore() const override { return ofNewBlock() >= 1; }

  void storeRecords(int count) override {
    for (int b = 1; b <= count; ++b) {
      i16& start = this->records()[b].StartChan;
      if (start < 1) start = 1;
    }
    this->records().SEChannelCount = static_cast<i16>(liveCount());
    AnalogGroupList<Group>::storeRecords(count);
  }

 private:
  [[nodiscard]] bool autoChan() const { return this->store().Config.AutoChan != kFalse; }
  [[nodiscard]] int liveCount() const { return LiveChannelCount(this->liveBlocks()); }
  [[nodiscard]] int ofNewBlock() const {
    return ChannelsAvailable(this->measurement().DefaultInputType);
  }

  // The other sections by their stored counts, this one as edited.
  [[nodiscard]] int free() const {
    const ProjectStore& project = this->store();
    const int stored =
        PanelFreeChans(project.TempBlock.SEChannelCount, project.VoltBlock.SEChannelCount,
                       project.BridgeBlock.SEChannelCount, project.Config.TK40MQty);
    return stored + this->project().SEChannelCount - liveCount();
  }

  [[nodiscard]] ChartBlocks chart() const {
    ChartBlocks blocks = ChartBlocksOf(this->store());
    blocks.*place_.blocks = this->liveBlocks();
    return blocks;
  }
  [[nodiscard]] StartChans startsByHand() const {
    StartChans starts = StoredStartChans(this->store());
    for (int b = 1; b <= this->Blocks.Count(); ++b) {
      (starts.*place_.starts)[b] = this->Data(b).StartChannel;
    }
    return starts;
  }

  PanelPlace place_;
};

}  // namespace ostrand
