// A box of rich text that a document is written into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

// A colour in the form of the settings: red in the lowest byte, then green and blue. With the top
// bit set it is a colour of the user's desktop, which a document cannot contain: the reader's
// default is used.
using Colour = std::int32_t;
inline constexpr Colour kWindowText = static_cast<Colour>(0x80000008U);

// The operations of the box that a document needs. Text is Windows-1252, lines end in CR LF.
// Positions count characters from 0, both of a line end included.
class RichText {
 public:
  virtual ~RichText() = default;

  // The whole text. Setting it clears colours and underlines, moves the insertion point to the
  // start and resets colour and underline to plain.
  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void Text(std::string_view text) = 0;

  // The insertion point; limited to the end.
  [[nodiscard]] virtual std::size_t SelStart() const = 0;
  virtual void SelStart(std::size_t position) = 0;

  // The look of the text inserted from now on.
  virtual void SelColor(Colour colour) = 0;
  virtual void SelUnderline(bool underline) = 0;

  // Inserts text at the insertion point, which moves to its end.
  virtual void SelText(std::string_view text) = 0;
};

// Keeps the text alone: for terminals, whose host converts `Text` to their code page.
class PlainText : public RichText {
 public:
  [[nodiscard]] std::string Text() const override { return text_; }
  void Text(std::string_view text) override;
  [[nodiscard]] std::size_t SelStart() const override { return start_; }
  void SelStart(std::size_t position) override;
  void SelColor(Colour) override {}
  void SelUnderline(bool) override {}
  void SelText(std::string_view text) override;

 private:
  std::string text_;
  std::size_t start_ = 0;
};

// Keeps the looks too: for hosts that draw them, and for files of word processors.
class StyledText : public PlainText {
 public:
  using PlainText::Text;
  void Text(std::string_view text) override;
  void SelColor(Colour colour) override { look_.colour = colour; }
  void SelUnderline(bool underline) override { look_.underline = underline; }
  void SelText(std::string_view text) override;

  struct Look {
    Colour colour = kWindowText;
    bool underline = false;
    friend bool operator==(const Look&, const Look&) = default;
  };
  // A number of characters of one look.
  struct Run {
    std::size_t length;
    Look look;
  };
  // Covers the whole text in order; neighbours differ.
  [[nodiscard]] const std::vector<Run>& Runs() const { return runs_; }

  // The document in RTF 1, in a fixed pitch font, in ASCII only.
  [[nodiscard]] std::string Rtf() const;

 private:
  Look look_;
  std::vector<Run> runs_;
};

}  // namespace ostrand
