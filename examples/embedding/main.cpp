// Sets up one project for each bench of a test hall, by a script, and writes its logger program:
//   bench_programs SCRIPT FOLDER BENCH...
// "$BENCH" in the script stands for the name of the bench.
#include <ostrand/ostrand.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

namespace {

// Answers nothing, as a service without a user does, and keeps a log.
class Log : public ostrand::Host {
 public:
  ostrand::BoxAnswer Show(const ostrand::Box& box) override {
    std::cerr << box.title << ": " << box.text << '\n';
    return ostrand::SafeAnswer(box.buttons);
  }
  void ProjectNamed(const std::string& path) override { std::cout << "project " << path << '\n'; }
};

std::string scriptFor(std::string script, const std::string& bench) {
  const std::string mark = "$BENCH";
  for (auto at = script.find(mark); at != std::string::npos; at = script.find(mark, at)) {
    script.replace(at, mark.size(), bench);
  }
  return script;
}

// Makes the project and the program of one bench; returns what went wrong.
std::string make(ostrand::Session& session, const std::string& script, const std::string& path) {
  if (const auto started = session.New(path); !started) return started.error;
  if (const auto played = session.Play(script); !played) return played.error;
  const auto found = session.Check();
  if (!found) return found.error;
  for (const ostrand::Problem& problem : found.value) {
    std::cout << problem.title << ": " << problem.text << '\n';
    if (problem.preventsSaving) return problem.title;
  }
  const auto saved = session.Save();
  for (const std::string& file : saved.value) std::cout << "wrote " << file << '\n';
  return saved.error;
}

}  // namespace

int main(int count, char** words) {
  if (count < 4) {
    std::cerr << "usage: bench_programs SCRIPT FOLDER BENCH...\n";
    return 2;
  }
  std::ifstream file(words[1], std::ios::binary);
  const std::string script{std::istreambuf_iterator<char>(file), {}};
  Log log;
  ostrand::Session session(log);
  int result = 0;
  for (int at = 3; at < count; ++at) {
    const std::string bench = words[at];
    const std::string wrong =
        make(session, scriptFor(script, bench), words[2] + ("/" + bench) + ".VKG");
    if (wrong.empty()) continue;
    std::cerr << bench << ": " << wrong << '\n';
    result = 1;
  }
  return result;
}
