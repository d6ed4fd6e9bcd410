// The project file: writing and reading of `.VKG` (module ORVUS_GENFILE).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/store.h"
#include "platform/clock.h"
#include "platform/file_identity.h"
#include "platform/filesystem.h"
#include "projectfile/read_report.h"
#include "text/result.h"

namespace ostrand::ORVUS_GENFILE {

// The whole file as bytes, `now` as its PCTime. Repairs the store as saving does: in a table in
// use a WriteIf of -1 becomes 1, and a negative TrigTabStop takes the value of TrigTable.
std::string ProjectFileText(ProjectStore& store, const platform::Moment& now);

// The file that a save of the project `path` replaces or creates, also if its name is spelled in
// another case; symbolic links are followed.
std::string PlaceOf(platform::FileSystem& files, std::string_view path);

// The result of a save.
struct SavedProject {
  platform::FileIdentity file;
  // Path of an old file that an earlier save had left alone under `base`._KG; empty for none.
  std::string keptAs;
};

// Writes `base`.VKG, where `base` is the path without extension. The caller holds the lock of the
// project. A project exists at every moment, the old one or the new one: the new file is written to
// a hidden neighbour, the old one gets `base`._KG as a second name, the new file takes its place,
// and the second name is deleted. After an error, whose text names the path, the old file is
// untouched, or, if only its folder could not be synced, the new one is in its place.
Result<SavedProject> SaveProjectFile(ProjectStore& store, platform::FileSystem& files,
                                     platform::Clock& clock, std::string_view base);

// The file that an interrupted save has left in place of the project file `name`: the path of the
// old file, or else of a first one that was being written. Nothing if the project exists or nothing
// was left.
std::optional<std::string> InterruptedSave(platform::FileSystem& files, std::string_view name);

// Renames the file found by InterruptedSave to the project and returns its former path; the caller
// holds the lock of the project. An error, naming the path, if the project exists, if nothing was
// left, or if the file ends before its last section.
Result<std::string> RecoverProjectFile(platform::FileSystem& files, std::string_view name);

// The bytes of a project file, whose read-only mark is removed; nothing if there is no such file;
// an error, naming the path, if it can't be read. A name without "." means ".VKG".
Result<std::optional<std::string>> ReadProjectFile(platform::FileSystem& files,
                                                   std::string_view name);

// Reads a project file into the store, on top of its content. False if there is no such file; an
// error, naming the path, if it can't be read.
Result<bool> LoadProjectFile(ProjectStore& store, platform::FileSystem& files,
                             std::string_view name);

// Reads the bytes of a project file, of this or an older format, and updates old forms. Unknown
// lines are skipped, and keys not in the bytes keep their values.
ReadReport ReadProjectText(ProjectStore& store, std::string_view bytes);

// Finds again which repetitions differ from their block in units (1), multiplier (2) or offset (4),
// in all blocks of the five kinds. A repetition without differences gets an empty text.
void RecountAliasExcept(ProjectStore& store);

}  // namespace ostrand::ORVUS_GENFILE
