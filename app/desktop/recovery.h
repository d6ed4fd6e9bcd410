// Copies of unsaved projects, for the case that the program ends without a save.
#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "session/project_origin.h"

namespace ostrand::desktop {

// A copy that a window has left behind.
struct RecoveryCopy {
  QString file;
  QString damage;  // why it cannot be read; empty for none, and then the rest is set
  ProjectOrigin origin;
  std::string bytes;  // of the project file that a save would have written
  QDateTime kept;
};

// The copy of one window. A copy is a file of the folder; a lock beside it shows that its window
// still runs, and ends with the process.
class Recovery {
 public:
  // No copies are kept if the folder's name is empty.
  explicit Recovery(const QString& folder);

  // Replaces the copy. False if it could not be written; then `WhyNot` has the reason.
  bool Keep(const ProjectOrigin& origin, const std::string& bytes);
  [[nodiscard]] const QString& WhyNot() const { return whyNot_; }
  // The project is saved or abandoned.
  void Remove();
  [[nodiscard]] const QString& File() const { return file_; }

  // Copies left by windows that no longer run, the latest first. A copy of a project whose file has
  // the same bytes is deleted: nothing is lost.
  [[nodiscard]] std::vector<RecoveryCopy> LeftBehind() const;
  // The user has decided about a copy.
  static void Discard(const RecoveryCopy& copy);

 private:
  QString folder_;
  QString file_;
  QString whyNot_;
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace ostrand::desktop
