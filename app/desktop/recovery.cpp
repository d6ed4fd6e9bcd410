#include "recovery.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QUuid>

#include "texts.h"

namespace ostrand::desktop {
namespace {

const QString kEnding = QStringLiteral(".project");
const QString kLockEnding = QStringLiteral(".lock");
constexpr qint64 kMaxBytes = qint64{64} << 20;
constexpr qsizetype kMaxHeader = 64 << 10;

QString lockOf(const QString& file) { return file + kLockEnding; }

QString hashOf(const QByteArray& bytes) {
  return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QString text(std::size_t number) { return QString::number(static_cast<qulonglong>(number)); }

std::size_t number(const QJsonValue& value) {
  return static_cast<std::size_t>(value.toString().toULongLong());
}

// A line of JSON, followed by the bytes of the project file.
QByteArray contentOf(const ProjectOrigin& origin, const QByteArray& bytes) {
  const platform::FileIdentity& known = origin.known;
  const QJsonObject header{{QStringLiteral("project"), PathText(origin.path)},
                           {QStringLiteral("file"), PathText(known.path)},
                           {QStringLiteral("exists"), known.exists},
                           {QStringLiteral("size"), text(known.size)},
                           {QStringLiteral("hash"), text(known.hash)},
                           {QStringLiteral("sha256"), hashOf(bytes)}};
  return QJsonDocument(header).toJson(QJsonDocument::Compact) + '\n' + bytes;
}

RecoveryCopy damaged(const QString& file, const QString& why) { return {file, why, {}, {}, {}}; }

RecoveryCopy read(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile()) return damaged(path, QStringLiteral("not a file"));
  if (!file.open(QIODevice::ReadOnly)) return damaged(path, file.errorString());
  if (file.size() > kMaxBytes) return damaged(path, QStringLiteral("too large"));
  const QByteArray content = file.readAll();
  const qsizetype end = content.left(kMaxHeader).indexOf('\n');
  const QJsonObject header =
      QJsonDocument::fromJson(content.left(std::max(end, qsizetype{0}))).object();
  const QByteArray bytes = content.mid(end + 1);
  if (header.isEmpty() || header.value(u"sha256").toString() != hashOf(bytes)) {
    return damaged(path, QStringLiteral("damaged"));
  }
  RecoveryCopy copy{path, {}, {}, bytes.toStdString(), QFileInfo(path).lastModified()};
  copy.origin.path = PathOf(header.value(u"project").toString());
  copy.origin.known = {PathOf(header.value(u"file").toString()), header.value(u"exists").toBool(),
                       std::nullopt, number(header.value(u"size")), number(header.value(u"hash"))};
  return copy;
}

// Without the line of the moment at which a file is saved.
QByteArray withoutMoment(QByteArray bytes) {
  const qsizetype at = bytes.indexOf("\nPCTime=");
  if (at < 0) return bytes;
  const qsizetype end = bytes.indexOf('\n', at + 1);
  return bytes.remove(at, end < 0 ? bytes.size() - at : end - at);
}

bool isSaved(const RecoveryCopy& copy) {
  QFile file(PathText(copy.origin.path));
  if (!QFileInfo(file).isFile() || file.size() > kMaxBytes) return false;
  return file.open(QIODevice::ReadOnly) &&
         withoutMoment(file.readAll()) == withoutMoment(QByteArray::fromStdString(copy.bytes));
}

}  // namespace

Recovery::Recovery(const QString& folder) : folder_(folder) {
  if (folder_.isEmpty()) return;
  file_ = QDir(folder_).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + kEnding);
}

bool Recovery::Keep(const ProjectOrigin& origin, const std::string& bytes) {
  whyNot_.clear();
  if (file_.isEmpty()) {
    whyNot_ = QStringLiteral("there is no folder for it");
    return false;
  }
  if (lock_ == nullptr) {
    QDir().mkpath(folder_);
    QFile::setPermissions(folder_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    lock_ = std::make_unique<QLockFile>(lockOf(file_));
    lock_->setStaleLockTime(0);  // it may be held for days
    lock_->tryLock(0);
  }
  QSaveFile file(file_);
  const QByteArray content = contentOf(origin, QByteArray::fromStdString(bytes));
  if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit()) {
    return true;
  }
  whyNot_ = file.errorString();
  return false;
}

void Recovery::Remove() {
  if (lock_ == nullptr) return;
  QFile::remove(file_);
  lock_.reset();
}

std::vector<RecoveryCopy> Recovery::LeftBehind() const {
  std::vector<RecoveryCopy> copies;
  if (folder_.isEmpty()) return copies;
  const QFileInfoList files = QDir(folder_).entryInfoList(
      {u'*' + kEnding}, QDir::Files | QDir::System | QDir::Hidden, QDir::Time);
  for (const QFileInfo& file : files) {
    QLockFile lock(lockOf(file.filePath()));
    lock.setStaleLockTime(0);
    if (file.filePath() == file_ || !lock.tryLock(0)) continue;
    RecoveryCopy copy = read(file.filePath());
    if (copy.damage.isEmpty() && isSaved(copy)) {
      Discard(copy);
    } else {
      copies.push_back(std::move(copy));
    }
  }
  return copies;
}

void Recovery::Discard(const RecoveryCopy& copy) { QFile::remove(copy.file); }

}  // namespace ostrand::desktop
