// A file that is written whole or not at all.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/filesystem.h"

namespace ostrand::platform {

// Hidden name beside `path` under which its new content is written.
std::string HiddenNeighbour(std::string_view path);

// Writes to a hidden neighbour of `path`; Commit checks every step, syncs and renames it over the
// target. What was not committed is removed by the destructor. A target that may not be changed is
// an error, though a rename could replace it. What a process that died left under the neighbour's
// name is removed; anything but a regular file there is left alone, and the neighbour takes a
// numbered name. Errors name the target. Two writers at once would share the neighbour: the caller
// holds the lock of the folder or of the project.
class AtomicFile {
 public:
  // `path` is a name that Target gave. The new file takes the rights of the file `rightsOf`, or of
  // the target.
  AtomicFile(FileSystem& files, std::string path, std::string_view rightsOf = {});
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  // The whole content, in one piece.
  Result<> Write(std::string_view bytes);
  // Whether Write has left the file as it is, by FileSystem::Stays; nothing remains to be done
  // then.
  [[nodiscard]] bool Stays() const { return stays_; }
  // Lets the disk begin with it.
  void StartSync();
  // All of it is on the disk itself, under the hidden name.
  Result<> Finish();
  // Finishes what is not finished yet and puts it into its place.
  Result<> Commit(FolderSync sync = FolderSync::kNow);

 private:
  Result<> open(std::string_view bytes);
  Result<> create();
  Result<> write(std::string_view bytes);
  Result<> finish();
  Result<> commit(FolderSync sync);
  // An error of the neighbour in terms of the file that the user knows; the disk may spell the
  // folder in another way.
  [[nodiscard]] Result<> ofTarget(Result<> result) const;

  FileSystem& files_;
  std::string path_;
  std::string rightsOf_;
  std::string hidden_;
  std::unique_ptr<OutputFile> file_;
  bool stays_ = false;
  bool created_ = false;  // the neighbour is on the disk
};

// Collects the files that are written with FolderSync::kLater while it lives, so that the disk
// works on all of them at once. Those that are not committed are dropped. The lock of the project
// must keep other writers out: files that need the lock of their folder do not join, nor do
// symbolic links.
class WriteBatch {
 public:
  explicit WriteBatch(FileSystem& files) : files_(files) { files_.Batch(this); }
  ~WriteBatch() { files_.Batch(nullptr); }
  WriteBatch(const WriteBatch&) = delete;
  WriteBatch& operator=(const WriteBatch&) = delete;

  // `path` is the name that was asked for.
  void Join(std::string_view path, std::unique_ptr<AtomicFile> file);

  struct Failure {
    std::string path;
    std::string text;
  };
  // Syncs all files, then puts them into their places, in the order of writing. Ends at the first
  // failure; the files from there on stay as they were.
  std::optional<Failure> Commit();

 private:
  struct Written {
    std::string path;
    std::unique_ptr<AtomicFile> file;
  };

  FileSystem& files_;
  std::vector<Written> written_;
};

}  // namespace ostrand::platform
