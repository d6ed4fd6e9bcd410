// The page with the summary.
#pragma once

#include <QTextEdit>

#include "session/ostrand.h"

namespace ostrand::desktop {

class SummaryPage final : public QTextEdit {
 public:
  explicit SummaryPage(QWidget* parent);
  // In the colours of the page's palette; a text that could not be read on it is made darker or
  // lighter. The scroll position stays.
  void Show(const StyledText& text);
};

}  // namespace ostrand::desktop
