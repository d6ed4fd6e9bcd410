#include "script/script_pruner.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "model/store.h"
#include "projectfile/genfile.h"
#include "script/screen_script.h"
#include "session/project_origin.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// An action: the answers before it and the line itself, the actions on the screen that it opens,
// and the way out of that with what is expected.
struct Step {
  std::string head;
  std::vector<Step> inner;
  std::string tail;
  bool kept = true;
};
using Steps = std::vector<Step>;

struct Line {
  std::string_view text;  // with its indentation
  std::size_t indent = 0;
  [[nodiscard]] std::string_view Verb() const { return Before(text.substr(indent), " "); }
};

std::vector<Line> linesOf(std::string_view text) {
  std::vector<Line> lines;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    const std::size_t indent = line.find_first_not_of(' ');
    if (indent != std::string_view::npos) lines.push_back({line, indent});
  }
  return lines;
}

void append(std::string& text, const Line& line) { text.append(line.text).append("\n"); }

class Reader {
 public:
  explicit Reader(std::string_view text) : lines_(linesOf(text)) {}

  Steps Read(std::size_t indent) {
    Steps steps;
    while (at_ < lines_.size() && lines_[at_].indent >= indent) steps.push_back(step(indent));
    return steps;
  }

 private:
  [[nodiscard]] bool isNext(std::size_t at, std::size_t indent, std::string_view verb) const {
    return at < lines_.size() && lines_[at].indent == indent && lines_[at].Verb() == verb;
  }

  Step step(std::size_t indent) {
    Step step;
    while (isNext(at_, indent, "answer")) append(step.head, lines_[at_++]);
    if (at_ < lines_.size()) append(step.head, lines_[at_++]);
    if (at_ < lines_.size() && lines_[at_].indent > indent) step.inner = Read(lines_[at_].indent);
    while (takeTail(step, indent)) {
    }
    return step;
  }

  bool takeTail(Step& step, std::size_t indent) {
    std::size_t end = at_;
    while (isNext(end, indent, "answer")) ++end;
    const bool belongs = isNext(end, indent, "done") || isNext(end, indent, "cancel") ||
                         isNext(end, indent, "enter") || isNext(end, indent, "escape") ||
                         (end == at_ && isNext(end, indent, "expect"));
    if (!belongs) return false;
    while (at_ <= end) append(step.tail, lines_[at_++]);
    return true;
  }

  std::vector<Line> lines_;
  std::size_t at_ = 0;
};

void append(std::string& text, const Steps& steps) {
  for (const Step& step : steps) {
    if (!step.kept) continue;
    text += step.head;
    append(text, step.inner);
    text += step.tail;
  }
}

class Pruner {
 public:
  Pruner(Ostrand& session, ScriptForms& forms, platform::Forms& inner)
      : session_(session), forms_(forms), inner_(inner), origin_(session.Origin()) {}

  std::string Prune(const std::string& lines) {
    Steps all = Reader(lines).Read(0);
    std::string text;
    for (Step& step : all) {
      Steps one;
      one.push_back(std::move(step));
      start_ = std::make_unique<ProjectStore>(session_.Store());
      if (!plays(one)) return lines;
      wanted_ = project();
      thin(one, one);
      if (!makesTheSame(one)) return lines;
      const bool apart = !one.front().inner.empty() && !text.empty();
      if (one.front().kept && apart) text += "\n";
      append(text, one);
    }
    return text;
  }

 private:
  std::string project() { return ORVUS_GENFILE::ProjectFileText(session_.Store(), {}); }

  // Plays the steps on the project before them.
  bool plays(const Steps& steps) {
    std::string text;
    append(text, steps);
    forms_ = ScriptForms(inner_);
    ScreenScript player(session_, forms_, text);
    session_.PutBack(*start_, origin_);  // enables the buttons of the screens that the player has
    return static_cast<bool>(player.Run());
  }

  bool makesTheSame(const Steps& steps) { return plays(steps) && project() == wanted_; }

  // Takes out runs of steps, the longest first, then looks into those that are left.
  void thin(const Steps& all, Steps& steps) {
    for (std::size_t run = steps.size(); run > 0; run /= 2) {
      for (std::size_t end = steps.size(); end > 0; end -= std::min(run, end)) {
        drop(all, steps, end - std::min(run, end), end);
      }
    }
    for (Step& step : steps) {
      if (step.kept) thin(all, step.inner);
    }
  }

  void drop(const Steps& all, Steps& steps, std::size_t first, std::size_t end) {
    std::vector<Step*> dropped;
    for (std::size_t at = first; at < end; ++at) {
      if (steps[at].kept) dropped.push_back(&steps[at]);
    }
    if (dropped.empty()) return;
    for (Step* step : dropped) step->kept = false;
    if (makesTheSame(all)) return;
    for (Step* step : dropped) step->kept = true;
  }

  Ostrand& session_;
  ScriptForms& forms_;
  platform::Forms& inner_;
  ProjectOrigin origin_;
  std::unique_ptr<ProjectStore> start_;
  std::string wanted_;
};

}  // namespace

std::string PruneScript(const std::string& lines, Ostrand& session, ScriptForms& forms,
                        platform::Forms& inner) {
  return Pruner(session, forms, inner).Prune(lines);
}

}  // namespace ostrand
