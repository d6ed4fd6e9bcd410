#include "colors.h"

#include <algorithm>
#include <array>

namespace ostrand::desktop {
namespace {

struct SystemColor {
  std::uint32_t number;
  QPalette::ColorRole role;
};
constexpr std::array<SystemColor, 11> kSystemColors = {{
    {0x05, QPalette::Base},
    {0x06, QPalette::Mid},
    {0x07, QPalette::WindowText},
    {0x08, QPalette::Text},
    {0x0C, QPalette::Window},
    {0x0D, QPalette::Highlight},
    {0x0E, QPalette::HighlightedText},
    {0x0F, QPalette::Window},
    {0x10, QPalette::Dark},
    {0x12, QPalette::ButtonText},
    {0x14, QPalette::Light},
}};

}  // namespace

QColor ColorOf(i32 color, const QPalette& palette) {
  const auto bits = static_cast<std::uint32_t>(color);
  if ((bits & 0x80000000U) == 0) {
    return QColor(static_cast<int>(bits & 0xFFU), static_cast<int>(bits >> 8U & 0xFFU),
                  static_cast<int>(bits >> 16U & 0xFFU));
  }
  const auto* found =
      std::find_if(kSystemColors.begin(), kSystemColors.end(),
                   [&](const SystemColor& system) { return system.number == (bits & 0xFFU); });
  return palette.color(found == kSystemColors.end() ? QPalette::Window : found->role);
}

}  // namespace ostrand::desktop
