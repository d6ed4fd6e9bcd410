// Moments as the files show them.
#pragma once

#include <string>

#include "platform/clock.h"

namespace ostrand {

// mm-dd-yyyy and hh:mm:ss, of the heads of files.
std::string DateText(const platform::Moment& moment);
std::string TimeText(const platform::Moment& moment);

// m/d/yyyy h:mm:ss AM, of the moment a project was saved.
std::string ShortMomentText(const platform::Moment& moment);

}  // namespace ostrand
