#include "system_calls.h"

#include <fcntl.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace ostrand::faults {
namespace {

constexpr std::array kOpenErrors = {EACCES, EIO, EMFILE, ENOMEM, EINTR};
constexpr std::array kReadErrors = {EIO, EINTR};
constexpr std::array kWriteErrors = {ENOSPC, EIO, EINTR};
constexpr std::array kSyncErrors = {EIO, ENOSPC, EINTR};
constexpr std::array kCloseErrors = {EIO, ENOSPC, EINTR};
constexpr std::array kNameErrors = {EACCES, EIO, ENOSPC, EROFS};
constexpr std::array kLinkErrors = {EPERM, EACCES, EIO, ENOSPC, EXDEV, EMLINK};
constexpr std::array kRemoveErrors = {EACCES, EIO, EBUSY};
constexpr std::array kLookErrors = {EACCES, EIO, ENOMEM};
constexpr std::array kRightsErrors = {EPERM, EIO, EROFS};
constexpr std::array kLockErrors = {ENOLCK, EIO, EINTR};
constexpr std::array kFolderErrors = {EIO, ENOMEM};
constexpr std::array kMemoryErrors = {ENOMEM};
constexpr std::array kStartErrors = {EAGAIN, ENOMEM};
constexpr std::array kWaitErrors = {ECHILD, EINTR};
constexpr std::array kPipeErrors = {EMFILE, ENFILE};
constexpr std::array kSignalErrors = {EPERM};
constexpr std::array kSeekErrors = {EIO};

constexpr std::array kCalls = std::to_array<CallRow>({
    {SYS_open, "open", kTakesSpace | kNamesFile | kOpens, kOpenErrors},
    {SYS_openat, "openat", kTakesSpace | kNamesEntry | kOpens, kOpenErrors},
    {SYS_creat, "creat", kTakesSpace | kNamesFile, kOpenErrors},
    {SYS_read, "read", kNone, kReadErrors},
    {SYS_pread64, "pread64", kNone, kReadErrors},
    {SYS_readv, "readv", kNone, kReadErrors},
    {SYS_write, "write", kTakesSpace | kWrites, kWriteErrors},
    {SYS_pwrite64, "pwrite64", kTakesSpace | kWrites, kWriteErrors},
    {SYS_writev, "writev", kTakesSpace, kWriteErrors},
    {SYS_sendfile, "sendfile", kTakesSpace, kWriteErrors},
    {SYS_copy_file_range, "copy_file_range", kTakesSpace, kWriteErrors},
    {SYS_fallocate, "fallocate", kTakesSpace, kWriteErrors},
    {SYS_ftruncate, "ftruncate", kTakesSpace, kWriteErrors},
    {SYS_fsync, "fsync", kTakesSpace | kSyncs, kSyncErrors},
    {SYS_fdatasync, "fdatasync", kTakesSpace | kSyncs, kSyncErrors},
    {SYS_close, "close", kRunsFirst, kCloseErrors},
    {SYS_rename, "rename", kTakesSpace | kRemoves | kNamesFile, kNameErrors},
    {SYS_renameat, "renameat", kTakesSpace | kRemoves | kNamesEntry, kNameErrors},
    {SYS_renameat2, "renameat2", kTakesSpace | kRemoves | kNamesEntry, kNameErrors},
    {SYS_link, "link", kTakesSpace | kNamesFile, kLinkErrors},
    {SYS_linkat, "linkat", kTakesSpace | kNamesEntry, kLinkErrors},
    {SYS_symlink, "symlink", kTakesSpace | kNamesFile, kLinkErrors},
    {SYS_symlinkat, "symlinkat", kTakesSpace | kNamesFile, kLinkErrors},
    {SYS_mkdir, "mkdir", kTakesSpace | kNamesFile, kNameErrors},
    {SYS_mkdirat, "mkdirat", kTakesSpace | kNamesEntry, kNameErrors},
    {SYS_unlink, "unlink", kRemoves | kNamesFile, kRemoveErrors},
    {SYS_unlinkat, "unlinkat", kRemoves | kNamesEntry, kRemoveErrors},
    {SYS_rmdir, "rmdir", kRemoves | kNamesFile, kRemoveErrors},
    {SYS_stat, "stat", kNamesFile, kLookErrors},
    {SYS_lstat, "lstat", kNamesFile, kLookErrors},
    {SYS_fstat, "fstat", kLists, kLookErrors},
    {SYS_newfstatat, "newfstatat", kNamesEntry, kLookErrors},
    {SYS_statx, "statx", kNamesEntry, kLookErrors},
    {SYS_access, "access", kNamesFile, kLookErrors},
    {SYS_faccessat, "faccessat", kNamesEntry, kLookErrors},
    {SYS_faccessat2, "faccessat2", kNamesEntry, kLookErrors},
    {SYS_readlink, "readlink", kNamesFile, kLookErrors},
    {SYS_readlinkat, "readlinkat", kNamesEntry, kLookErrors},
    {SYS_chmod, "chmod", kNamesFile, kRightsErrors},
    {SYS_fchmod, "fchmod", kNone, kRightsErrors},
    {SYS_fchmodat, "fchmodat", kNamesEntry, kRightsErrors},
    {SYS_chown, "chown", kNamesFile, kRightsErrors},
    {SYS_fchown, "fchown", kNone, kRightsErrors},
    {SYS_lchown, "lchown", kNamesFile, kRightsErrors},
    {SYS_fchownat, "fchownat", kNamesEntry, kRightsErrors},
    {SYS_utimensat, "utimensat", kNamesEntry, kRightsErrors},
    {SYS_flock, "flock", kNone, kLockErrors},
    {SYS_fcntl, "fcntl", kNone, kLockErrors},
    {SYS_lseek, "lseek", kNone, kSeekErrors},
    {SYS_getdents64, "getdents64", kLists, kFolderErrors},
    {SYS_getcwd, "getcwd", kNone, kLookErrors},
    {SYS_chdir, "chdir", kNamesFile, kLookErrors},
    {SYS_fchdir, "fchdir", kNone, kLookErrors},
    {SYS_mmap, "mmap", kMemory, kMemoryErrors},
    {SYS_mremap, "mremap", kMemory, kMemoryErrors},
    {SYS_brk, "brk", kMemory, kMemoryErrors},
    {SYS_clone, "clone", kStarts, kStartErrors},
    {SYS_clone3, "clone3", kStarts, kStartErrors},
    {SYS_vfork, "vfork", kStarts, kStartErrors},
    {SYS_fork, "fork", kStarts, kStartErrors},
    {SYS_wait4, "wait4", kNone, kWaitErrors},
    {SYS_waitid, "waitid", kNone, kWaitErrors},
    {SYS_pipe, "pipe", kNone, kPipeErrors},
    {SYS_pipe2, "pipe2", kNone, kPipeErrors},
    {SYS_dup, "dup", kNone, kPipeErrors},
    {SYS_kill, "kill", kNone, kSignalErrors},
});

struct ErrorRow {
  int number;
  std::string_view name;
};

constexpr std::array kErrors = std::to_array<ErrorRow>({
    {EACCES, "EACCES"},
    {EAGAIN, "EAGAIN"},
    {EBUSY, "EBUSY"},
    {ECHILD, "ECHILD"},
    {EINTR, "EINTR"},
    {EIO, "EIO"},
    {EMFILE, "EMFILE"},
    {EMLINK, "EMLINK"},
    {ENFILE, "ENFILE"},
    {ENOLCK, "ENOLCK"},
    {ENOMEM, "ENOMEM"},
    {ENOSPC, "ENOSPC"},
    {EPERM, "EPERM"},
    {EROFS, "EROFS"},
    {EXDEV, "EXDEV"},
});

}  // namespace

bool CanFail(long number, long command) {
  return number != SYS_fcntl || command == F_SETLK || command == F_SETLKW ||
         command == F_OFD_SETLK || command == F_OFD_SETLKW;
}

const CallRow* FindCall(long number) {
  const auto found = std::find_if(kCalls.begin(), kCalls.end(),
                                  [&](const CallRow& row) { return row.number == number; });
  return found == kCalls.end() ? nullptr : &*found;
}

std::string CallName(long number) {
  const CallRow* row = FindCall(number);
  return row == nullptr ? "call " + std::to_string(number) : std::string(row->name);
}

std::string_view ErrorName(int error) {
  for (const ErrorRow& row : kErrors) {
    if (row.number == error) return row.name;
  }
  return "none";
}

int ErrorByName(std::string_view name) {
  for (const ErrorRow& row : kErrors) {
    if (row.name == name) return row.number;
  }
  return 0;
}

}  // namespace ostrand::faults
