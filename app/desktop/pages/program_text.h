// A program as a text: coloured, with line numbers and marks in the margin. Read only.
#pragma once

#include <QPlainTextEdit>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class QSyntaxHighlighter;

namespace ostrand::desktop {

// What the margin says of a line.
enum class LineMark {
  kNone,
  kChanged,  // "~"
  kAdded,    // "+"
  kRemoved,  // "-"; for the line itself, or for lines removed before it
};

class ProgramText final : public QPlainTextEdit {
 public:
  explicit ProgramText(QWidget* parent);

  // Shows this text, UTF-8 with lines that end in CR LF or LF. Lines that stay keep their colours,
  // and the place that is seen stays.
  void Program(std::string_view text);
  [[nodiscard]] const std::string& Program() const { return text_; }

  // The numbers that the margin shows, by line; 0 for a line without one. Lines are counted from 1
  // where there are none.
  void Numbers(std::vector<int> numbers);
  // Marks by line, from 1.
  void Marks(std::map<int, LineMark> marks);
  [[nodiscard]] LineMark MarkOf(int line) const;
  // Lines at fault with what is wrong with them. `name` is underlined, or else the whole line.
  struct Fault {
    int line;
    QString name;
    QString text;
  };
  void Faults(std::vector<Fault> faults);
  // Lines with another background.
  void Highlighted(std::vector<int> lines);
  [[nodiscard]] const std::vector<int>& Highlighted() const { return highlighted_; }

  // The line of the cursor, from 1.
  [[nodiscard]] int Line() const;
  // Moves the cursor to the line, from 1, and shows it in the middle.
  void GoTo(int line);
  // Selects the next place of a text after the cursor, or before it, in any case of letters; from
  // the other end if there is none. False if the text is nowhere.
  bool Find(const QString& text, bool backward = false);

  // Used by the margin.
  [[nodiscard]] int MarginWidth() const;
  void PaintMargin(QPaintEvent* event);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void layOutMargin();
  void showSelections();

  QWidget* margin_;
  QSyntaxHighlighter* colors_;
  std::string text_;
  std::vector<int> numbers_;
  std::map<int, LineMark> marks_;
  std::vector<Fault> faults_;
  std::vector<int> highlighted_;
};

}  // namespace ostrand::desktop
