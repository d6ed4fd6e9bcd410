// Moments as the files show them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace ostrand {

// mm-dd-yyyy and hh:mm:ss, of the heads of files.
std::string DateText(const platform::Moment& moment);
std::string TimeText(const platform::Moment& moment);

// m/d/yyyy h:mm:ss AM, of the moment a project was saved.
std::string ShortMomentText(const platform::Moment& moment);

// The moment of such a text; nothing for a text of any other form.
std::optional<platform::Moment> MomentOfShortText(std::string_view text);

}  // namespace ostrand
