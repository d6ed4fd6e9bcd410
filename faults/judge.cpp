#include "judge.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <set>

#include "system_calls.h"

namespace ostrand::faults {
namespace {

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

std::string titleOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// The content of a file; null if there is none.
const std::string* contentOf(const Tree& tree, const std::string& name) {
  const auto found = tree.find(name);
  return found == tree.end() ? nullptr : &found->second;
}

bool same(const Tree& left, const Tree& right, const std::string& name) {
  const std::string* one = contentOf(left, name);
  const std::string* other = contentOf(right, name);
  return (one == nullptr) == (other == nullptr) && (one == nullptr || *one == *other);
}

bool isOldOrNew(const Subject& subject, const Tree& tree, const std::string& name) {
  return same(tree, subject.before, name) ||
         std::any_of(subject.after.begin(), subject.after.end(),
                     [&](const Tree& after) { return same(tree, after, name); });
}

// Whether the files are `after` up to one of them, and as before from there on.
bool isInOrder(const Subject& subject, const Tree& tree, const Tree& after) {
  auto file = subject.files.begin();
  while (file != subject.files.end() && same(tree, after, *file)) ++file;
  return std::all_of(file, subject.files.end(),
                     [&](const std::string& rest) { return same(tree, subject.before, rest); });
}

bool isDone(const Subject& subject, const Tree& tree, const Tree& after) {
  return std::all_of(subject.files.begin(), subject.files.end(),
                     [&](const std::string& name) { return same(tree, after, name); });
}

// The lines of `text` that are not in `usual`.
std::string added(const std::string& text, const std::string& usual) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string line = text.substr(at, end - at);
    if (usual.find(line + "\n") == std::string::npos) result += line + "\n";
    at = end + 1;
  }
  return result;
}

// A lock file stays beside the others, since no process may delete it while another waits for it.
bool isLockFile(const std::string& name) { return name.ends_with(".lock"); }

// What a killed program may leave, according to the guide: hidden neighbours, the project's old
// file, the folder of a test compile.
bool mayStay(const std::string& name) {
  return name.ends_with("._KG") || name.find(".writing") != std::string::npos ||
         name.starts_with("work/");
}

bool isFolderOnTheWay(const std::string& name) { return name == "home/ostrand/"; }

// Files that exist neither before nor after.
std::vector<std::string> extraFiles(const Subject& subject, const Tree& tree) {
  std::vector<std::string> names;
  for (const auto& [name, bytes] : tree) {
    const bool known = contentOf(subject.before, name) != nullptr ||
                       contentOf(subject.after.front(), name) != nullptr;
    if (!known && !isLockFile(name) && !isFolderOnTheWay(name)) names.push_back(name);
  }
  return names;
}

// Changed files that the command should not touch.
std::vector<std::string> touchedFiles(const Subject& subject, const Tree& tree) {
  std::vector<std::string> names;
  for (const auto& [name, bytes] : subject.before) {
    const bool own =
        std::find(subject.files.begin(), subject.files.end(), name) != subject.files.end();
    if (!own && !same(tree, subject.before, name)) names.push_back(name);
  }
  return names;
}

// Whether the fault prevents the program from removing that file, or is a reason to keep it.
bool excuses(const Fault& fault, const Run& run, const std::string& file) {
  if (!mayStay(file)) return false;
  if (fault.kind == Fault::Kind::kKill) return true;
  if (fault.at >= run.calls.size()) return false;
  const SeenCall& call = run.calls[fault.at];
  const CallRow* row = FindCall(call.number);
  if (row == nullptr) return false;
  // Without memory or descriptors even the way to the file cannot be found.
  const bool noMeans = fault.error == ENOMEM || fault.error == EMFILE;
  const bool goesOn = fault.kind == Fault::Kind::kOn;
  const bool looksAtIt = !call.path.empty() && file.find(titleOf(call.path)) != std::string::npos;
  const bool keepsOld = (row->traits & kSyncs) != 0 && file.ends_with("._KG");
  const bool looksAtOpened = (row->traits & kNamesEntry) != 0 && call.path.empty();
  return noMeans || goesOn || looksAtIt || looksAtOpened || keepsOld ||
         (row->traits & (kRemoves | kLists)) != 0;
}

bool names(const Subject& subject, const std::string& message) {
  const std::string text = lower(message);
  return std::any_of(subject.named.begin(), subject.named.end(), [&](const std::string& name) {
    return text.find(lower(name)) != std::string::npos;
  });
}

// A "wrote pump.VKG" for a file that is not new.
std::string falseClaim(const Subject& subject, const std::string& out, const Tree& tree) {
  for (const std::string& file : subject.files) {
    const std::string title = titleOf(file);
    if (out.find("wrote " + title + "\n") == std::string::npos) continue;
    const bool isNew = std::any_of(subject.after.begin(), subject.after.end(),
                                   [&](const Tree& after) { return same(tree, after, file); });
    if (!isNew) return title;
  }
  return {};
}

// Why the run counts as a silent failure; empty if it does not.
std::string silence(const Subject& subject, const Fault& fault, const Outcome& normal,
                    const Outcome& met, const Tree& left) {
  const int code = met.run.code;
  if (met.run.hung) return "it does not end";
  if (code < 0 || code > 2) return "it ends with code " + std::to_string(code);
  if (const std::string title = falseClaim(subject, met.out, left); !title.empty()) {
    return "says that it wrote " + title;
  }
  const SeenCall* call = fault.at < met.run.calls.size() ? &met.run.calls[fault.at] : nullptr;
  const CallRow* row = call == nullptr ? nullptr : FindCall(call->number);
  const bool syncs = row != nullptr && (row->traits & kSyncs) != 0;
  if (syncs && fault.error != EINTR && code == 0) return "code 0, but it may not be on the disk";
  const std::string message = added(met.err, normal.err);
  const bool done = isDone(subject, left, subject.after.front());
  if (done && met.out == normal.out && code == 0) return {};
  // A lost message on standard error shows in the exit code only.
  const bool muted = call != nullptr && call->path.empty() && call->descriptor == 2;
  if (muted) return code != 0 || done ? "" : "no message and code 0";
  if (done && code == 0) return "code 0, but not what it said without the fault";
  const bool otherEnd =
      std::any_of(subject.after.begin() + 1, subject.after.end(),
                  [&](const Tree& after) { return isDone(subject, left, after); });
  if (code == 0 && !(otherEnd && !message.empty())) return "code 0, but not all was written";
  if (message.empty()) return "no message";
  const bool memory = row != nullptr && (row->traits & kMemory) != 0;
  const bool namesCall = call != nullptr && call->path.find('/') != std::string::npos &&
                         message.find(call->path) != std::string::npos;
  return memory || namesCall || names(subject, message) ? "" : "the message names no file";
}

}  // namespace

bool FilesReadable(const Subject& subject, const Tree& tree) {
  return std::all_of(subject.files.begin(), subject.files.end(),
                     [&](const std::string& name) { return isOldOrNew(subject, tree, name); });
}

std::vector<Finding> Judge(const Subject& subject, const Fault& fault, const Outcome& normal,
                           const Outcome& met, const Tree& left) {
  std::vector<Finding> findings;
  for (const std::string& name : subject.files) {
    if (isOldOrNew(subject, left, name)) continue;
    const bool gone = contentOf(left, name) == nullptr;
    findings.push_back({kLoss, name + (gone ? " is gone" : " is neither old nor new")});
  }
  if (findings.empty() &&
      std::none_of(subject.after.begin(), subject.after.end(),
                   [&](const Tree& after) { return isInOrder(subject, left, after); })) {
    findings.push_back({kMixture, "files of two saves"});
  }
  for (const std::string& name : touchedFiles(subject, left)) {
    findings.push_back({kLoss, name + " is not as it was"});
  }
  for (const std::string& name : extraFiles(subject, left)) {
    if (!excuses(fault, met.run, name)) findings.push_back({kLeftover, name + " is left"});
  }
  if (fault.kind == Fault::Kind::kKill) return findings;
  if (met.run.strays) findings.push_back({kLeftover, "a process is left"});
  if (const std::string why = silence(subject, fault, normal, met, left); !why.empty()) {
    findings.push_back({kSilent, why});
  }
  return findings;
}

std::vector<Finding> JudgeNext(const Subject& subject, const Outcome& next, const Tree& left) {
  if (next.run.code != 0) {
    return {{kNext, "code " + std::to_string(next.run.code) + ": " + next.err}};
  }
  std::vector<Finding> findings;
  if (!isDone(subject, left, subject.after.front())) {
    findings.push_back({kNext, "other files than without a fault"});
  }
  for (const std::string& name : extraFiles(subject, left)) {
    // Folders of a test compile are temporary files, which the system deletes.
    if (!name.starts_with("work/")) findings.push_back({kNext, name + " is still there"});
  }
  return findings;
}

}  // namespace ostrand::faults
