#include "undo.h"

#include <QByteArray>
#include <utility>

#include "model/new_store.h"
#include "project_bytes.h"
#include "projectfile/genfile.h"

namespace ostrand::desktop {
namespace {

template <class T, int First, int Last>
std::size_t bytesOf(const LateRow<T, First, Last>& row) {
  return row.Made().size() * sizeof(T);
}

std::size_t bytesOf(const OutputSet& outputs) { return bytesOf(outputs.Histo); }

template <class Group>
std::size_t bytesOfBlocks(const Group& group) {
  std::size_t bytes = bytesOf(group.Blocks);
  for (const auto& block : group.Blocks.Made()) {
    bytes += bytesOf(block.Alias) + bytesOf(block.Output);
  }
  return bytes;
}

std::string packed(ProjectStore& store) {
  const std::string text = ORVUS_GENFILE::ProjectFileText(store, platform::Moment{});
  return qCompress(QByteArray::fromStdString(text)).toStdString();
}

std::unique_ptr<ProjectStore> unpacked(const std::string& bytes) {
  return StoreOf(qUncompress(QByteArray::fromStdString(bytes)).toStdString());
}

}  // namespace

std::size_t BytesOf(const ProjectStore& store) {
  std::size_t bytes = sizeof store + bytesOfBlocks(store.TempBlock) +
                      bytesOfBlocks(store.VoltBlock) + bytesOfBlocks(store.BridgeBlock) +
                      bytesOfBlocks(store.TK40MBlock) + bytesOf(store.Can.Item) +
                      bytesOf(store.CalcFields.Field);
  for (const PulseBlockGroup& group : store.PulseBlock) bytes += bytesOfBlocks(group);
  for (const CanItemData& item : store.Can.Item.Made()) {
    bytes += bytesOf(item.Alias) + bytesOf(item.Output);
  }
  for (const CalcFieldData& field : store.CalcFields.Field.Made()) bytes += bytesOf(field.Output);
  for (const OutputTable& table : store.Tables.Table) {
    for (const auto& conditions : table.Trigger) bytes += bytesOf(conditions);
    bytes += bytesOf(table.Write);
  }
  return bytes;
}

std::string UndoHistory::nameOf(const Steps& steps) {
  return steps.empty() ? std::string() : steps.front().name;
}

UndoHistory::Step UndoHistory::stepOf(std::string name, KeptProject state) {
  Step step{std::move(name), std::move(state), {}, 0};
  step.bytes = BytesOf(*step.state.store);
  return step;
}

void UndoHistory::Add(std::string name, KeptProject before) {
  redo_.clear();
  undo_.push_front(stepOf(std::move(name), std::move(before)));
  limit();
}

void UndoHistory::Clear() {
  undo_.clear();
  redo_.clear();
}

KeptProject UndoHistory::step(Steps& from, Steps& to, KeptProject now) {
  Step step = std::move(from.front());
  from.pop_front();
  to.push_front(stepOf(step.name, std::move(now)));
  if (step.state.store == nullptr) step.state.store = unpacked(step.packed);
  return std::move(step.state);
}

std::size_t UndoHistory::Bytes() const {
  std::size_t bytes = 0;
  for (const Steps* steps : {&undo_, &redo_}) {
    for (const Step& step : *steps) bytes += step.bytes;
  }
  return bytes;
}

void UndoHistory::limit() {
  std::size_t bytes = 0;
  for (Step& step : undo_) {
    bytes += step.bytes;
    if (bytes <= kMaxCopies || step.state.store == nullptr) continue;
    bytes -= step.bytes;
    step.packed = packed(*std::exchange(step.state.store, nullptr));
    step.bytes = step.packed.size();
    bytes += step.bytes;
  }
  while (undo_.size() > kMaxSteps || (undo_.size() > 1 && Bytes() > kMaxBytes)) undo_.pop_back();
}

}  // namespace ostrand::desktop
