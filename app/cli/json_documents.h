// The documents of a project in JSON, for programs. All texts are in UTF-8; times are in
// microseconds, 0 for one that is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "can/pick_list.h"
#include "model/statement_channels.h"
#include "session/ostrand.h"

namespace ostrand::cli {

// Each is an object for the file, without a line end.
std::string SummaryJson(std::string_view file, Ostrand& session);
std::string WiringJson(std::string_view file, Ostrand& session, const StatementChannels& channels);
std::string TimesJson(std::string_view file, const ProjectStore& store);

// A document of objects, with its line end.
std::string JsonArray(const std::vector<std::string>& objects);

// With its line end.
std::string CanListJson(std::string_view file, const CanList& list);

}  // namespace ostrand::cli
