#include "contrast.h"

#include <algorithm>
#include <cmath>

namespace ostrand::desktop {
namespace {

double linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

QColor between(const QColor& from, const QColor& to, double part) {
  const auto mix = [part](float one, float other) {
    return static_cast<float>(one + (other - one) * part);
  };
  return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                          mix(from.blueF(), to.blueF()));
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
  const double first = luminance(one);
  const double second = luminance(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor Readable(const QColor& text, const QColor& background) {
  constexpr int kSteps = 20;
  const QColor end =
      Contrast(Qt::white, background) > Contrast(Qt::black, background) ? Qt::white : Qt::black;
  for (int step = 0; step < kSteps; ++step) {
    const QColor tried = between(text, end, static_cast<double>(step) / kSteps);
    if (Contrast(tried, background) >= kMinContrast) return tried;
  }
  return end;
}

}  // namespace ostrand::desktop
