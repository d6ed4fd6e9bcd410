#include "platform/posix/project_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/paths.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/system_error.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kBetweenTries{10};
// After a takeover from another machine, until a second taker must have written its own name.
constexpr milliseconds kTakeoverCheck{200};
constexpr std::int64_t kDeadAfter = 60;  // seconds without a touch
constexpr std::int64_t kBornWithin = 2;  // seconds in which a new holder has written its name
constexpr int kMaxNumber = 9;
constexpr int kMaxAgain = 100;  // tries without a rest
constexpr std::size_t kMaxTitle = 240;
constexpr std::size_t kMaxContent = 512;
constexpr mode_t kMode = 0644;

std::string hostName() {
  std::array<char, 256> name{};
  if (::gethostname(name.data(), name.size() - 1) != 0 || name.front() == '\0') return "localhost";
  return name.data();
}

std::string userName() {
  for (const char* variable : {"LOGNAME", "USER"}) {
    const char* name = std::getenv(variable);
    if (name != nullptr && *name != '\0' && std::strpbrk(name, " \t\r\n") == nullptr) return name;
  }
  return "user-" + NumberText(static_cast<std::int64_t>(::geteuid()));
}

struct Holder {
  std::string user;
  std::string host;
  std::int64_t process = 0;
  bool known = false;

  [[nodiscard]] std::string Text() const {
    if (!known) return "an unknown program";
    return user + " on " + host + ", process " + NumberText(process);
  }
};

std::string ownContent() {
  return userName() + " " + hostName() + " " + NumberText(static_cast<std::int64_t>(::getpid())) +
         " " + NumberText(static_cast<std::int64_t>(::time(nullptr))) + "\n";
}

// Parses a lock file. Any program may have written it, and its words are shown on a terminal.
Holder parse(std::string_view content) {
  std::vector<std::string> words(1);
  for (const char letter : content) {
    if (letter == ' ' || letter == '\n') {
      words.emplace_back();
    } else {
      words.back() += static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F ? '?' : letter;
    }
  }
  if (words.size() < 4) return {};
  Holder holder{words[0], words[1], 0, true};
  for (const char digit : words[2]) {
    if (digit < '0' || digit > '9' || holder.process > 999'999'999) return {};
    holder.process = 10 * holder.process + (digit - '0');
  }
  holder.known = !holder.user.empty() && !holder.host.empty() && holder.process > 0;
  return holder;
}

std::string contentOf(int file) {
  std::string content(kMaxContent, '\0');
  const ssize_t got = ::pread(file, content.data(), content.size(), 0);
  content.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return content;
}

bool isAt(const struct stat& file, const std::string& path) {
  struct stat there {};
  return ::lstat(path.c_str(), &there) == 0 && there.st_ino == file.st_ino &&
         there.st_dev == file.st_dev;
}

// A new file in the folder of `path`, dated by its disk: one without a name, which a kill does not
// leave, or, on a disk without such files, one that is deleted at once. -1 on failure.
int openFresh(const std::string& path) {
  const std::string folder = Split(path).folder;
  const int nameless =
      ::open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (nameless >= 0) return nameless;
  const std::string name = path + "-" + NumberText(static_cast<std::int64_t>(::getpid()));
  const int created = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (created >= 0) static_cast<void>(::unlink(name.c_str()));
  return created;
}

// Seconds since `file` was touched. The disk may be another machine's, with a different clock.
std::int64_t age(const struct stat& file, const std::string& path) {
  std::int64_t now = ::time(nullptr);
  const int created = openFresh(path);
  if (created >= 0) {
    struct stat fresh {};
    if (::fstat(created, &fresh) == 0) now = fresh.st_mtim.tv_sec;
    ::close(created);
  }
  return now - file.st_mtim.tv_sec;
}

class PosixProjectLock : public ProjectLock {
 public:
  PosixProjectLock(std::string project, std::string path, int file, milliseconds refresh)
      : project_(std::move(project)), path_(std::move(path)), file_(file), refresh_(refresh) {}
  ~PosixProjectLock() override {
    // After a long time another machine may hold the lock, and its file must stay.
    if (steady_clock::now() - touched_ < refresh_ || mine()) {
      static_cast<void>(::unlink(path_.c_str()));
    }
    ::close(file_);
  }
  PosixProjectLock(const PosixProjectLock&) = delete;
  PosixProjectLock& operator=(const PosixProjectLock&) = delete;

  Result<> Keep() override {
    if (steady_clock::now() - touched_ < refresh_) return Done{};
    if (!mine()) {
      return Error{project_ + ": another machine has taken over the lock of this save"};
    }
    static_cast<void>(::futimens(file_, nullptr));
    touched_ = steady_clock::now();
    return Done{};
  }

 private:
  [[nodiscard]] bool mine() const {
    struct stat info {};
    if (::fstat(file_, &info) != 0 || !isAt(info, path_)) return false;
    // On this machine no other process can take it over while its file is locked.
    return parse(contentOf(file_)).host == hostName();
  }

  std::string project_;
  std::string path_;
  int file_;
  milliseconds refresh_;
  steady_clock::time_point touched_ = steady_clock::now();
};

// An attempt to take the lock.
class Taker {
 public:
  explicit Taker(const std::string& project) : project_(project) {
    const SplitPath parts = Split(project);
    std::string title(WithoutExtension(parts.title).substr(0, kMaxTitle));
    // One lock for all spellings, since a save may change the spelling of its project.
    for (char& letter : title) {
      if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    first_ = parts.folder + "." + title + ".lock";
    path_ = first_;
  }
  ~Taker() { drop(); }
  Taker(const Taker&) = delete;
  Taker& operator=(const Taker&) = delete;

  enum class Outcome { kTaken, kBusy, kAgain, kNoFolder, kFailed };

  Outcome Try() {
    drop();
    const bool created = create();
    if (!created && errno != EEXIST) return failed(errno);
    if (!created) {
      if (const Outcome opened = openExisting(); opened != Outcome::kTaken) return opened;
    } else if (!writeOwn()) {
      const int number = errno;
      static_cast<void>(::unlink(path_.c_str()));
      return failed(number);
    }
    bool seesLocks = true;
    while (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
      if (errno == EINTR) continue;
      if (errno == EWOULDBLOCK) {
        holder_ = parse(contentOf(file_));
        return Outcome::kBusy;
      }
      if (!IsNoLock(errno)) return failed(errno);
      seesLocks = false;
      break;
    }
    struct stat info {};
    if (::fstat(file_, &info) != 0) return failed(errno);
    // Its holder has removed it while it was being opened.
    if (!isAt(info, path_)) return Outcome::kAgain;
    if ((info.st_mode & kMode) != kMode) static_cast<void>(::fchmod(file_, kMode));
    return created ? Outcome::kTaken : takeOver(info, seesLocks);
  }

  std::unique_ptr<ProjectLock> Lock(milliseconds refresh) {
    return std::make_unique<PosixProjectLock>(project_, path_, std::exchange(file_, -1), refresh);
  }
  [[nodiscard]] std::string HolderText() const { return holder_.Text(); }
  [[nodiscard]] Error Failure() const { return SystemError(project_, number_); }
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  void drop() {
    if (file_ >= 0) ::close(std::exchange(file_, -1));
  }

  Outcome failed(int number) {
    number_ = number;
    const bool noFolder = number == EACCES || number == EPERM || number == EROFS ||
                          number == ENOENT || number == ENOTDIR;
    return noFolder ? Outcome::kNoFolder : Outcome::kFailed;
  }

  bool create() {
    file_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode);
    return file_ >= 0;
  }

  bool writeOwn() {
    const std::string content = ownContent();
    const ssize_t written = ::pwrite(file_, content.data(), content.size(), 0);
    if (written >= 0 && static_cast<std::size_t>(written) != content.size()) errno = ENOSPC;
    return written == static_cast<ssize_t>(content.size());
  }

  // kTaken for a file that is open now.
  Outcome openExisting() {
    constexpr int kFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    struct stat info {};
    if (::lstat(path_.c_str(), &info) != 0) return Outcome::kAgain;
    if (!S_ISREG(info.st_mode)) return nextName();
    file_ = ::open(path_.c_str(), O_RDWR | kFlags);
    writable_ = file_ >= 0;
    if (!writable_ && (errno == EACCES || errno == EROFS)) {
      file_ = ::open(path_.c_str(), O_RDONLY | kFlags);
    }
    if (file_ >= 0) return Outcome::kTaken;
    if (errno == EACCES) {  // not readable, so that its holder is unknown
      holder_ = {};
      return Outcome::kBusy;
    }
    return errno == ENOENT || errno == ELOOP ? Outcome::kAgain : failed(errno);
  }

  Outcome nextName() {
    if (taken_ == kMaxNumber) return failed(EEXIST);
    path_ = first_ + "." + NumberText(++taken_);
    return Outcome::kAgain;
  }

  Outcome takeOver(const struct stat& info, bool seesLocks) {
    const std::string content = contentOf(file_);
    holder_ = parse(content);
    const bool own = holder_.known && holder_.host == hostName();
    const bool lives =
        own ? !seesLocks && (::kill(static_cast<pid_t>(holder_.process), 0) == 0 || errno == EPERM)
            : age(info, path_) < (content.empty() ? kBornWithin : kDeadAfter);
    if (lives) return Outcome::kBusy;
    if (!writable_) {
      static_cast<void>(::unlink(path_.c_str()));
      return Outcome::kAgain;
    }
    if (::ftruncate(file_, 0) != 0 || !writeOwn()) return failed(errno);
    return own || stillOwn() ? Outcome::kTaken : Outcome::kBusy;
  }

  // Two machines that do not see each other's locks may have found the same dead holder.
  bool stillOwn() {
    std::this_thread::sleep_for(kTakeoverCheck);
    const int again = ::open(path_.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (again < 0) return false;
    holder_ = parse(contentOf(again));
    ::close(again);
    return holder_.process == ::getpid() && holder_.host == hostName();
  }

  std::string project_;
  std::string first_;
  std::string path_;
  int taken_ = 0;  // names that are used by something else
  int file_ = -1;
  bool writable_ = true;
  int number_ = 0;
  Holder holder_;
};

}  // namespace

Result<std::unique_ptr<ProjectLock>> LockProjectFile(const std::string& project,
                                                     const Waiting& waiting,
                                                     const LockTimes& times) {
  Taker taker(project);
  const auto end = steady_clock::now() + times.patience;
  int again = 0;
  for (;;) {
    switch (taker.Try()) {
      case Taker::Outcome::kTaken:
        return taker.Lock(times.refresh);
      case Taker::Outcome::kNoFolder:
        return std::unique_ptr<ProjectLock>();
      case Taker::Outcome::kFailed:
        return taker.Failure();
      case Taker::Outcome::kAgain:
        if (++again < kMaxAgain) continue;
        break;
      case Taker::Outcome::kBusy:
        break;
    }
    if (steady_clock::now() >= end) {
      return Error{project + ": being saved by " + taker.HolderText() + " (" + taker.Path() + ")"};
    }
    again = 0;
    if (waiting) waiting(taker.HolderText());
    std::this_thread::sleep_for(kBetweenTries);
  }
}

}  // namespace ostrand::platform
