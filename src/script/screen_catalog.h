// A catalogue of the screens, for script authors.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/choice.h"
#include "session/ostrand.h"

namespace ostrand {

// Loads a sample project into the store, on which every screen can be opened: blocks of each kind,
// an item, a field.
void MakeCatalogProject(ProjectStore& store);

// Opens every screen from the main row, the options and other screens, and leaves it by Cancel;
// calls `visit` while each is open. A screen with several openers is visited several times.
void VisitScreens(Ostrand& control, const std::function<void(Screen&)>& visit);

// What the text of a catalog begins with.
std::string_view CatalogLead();

// All screens with their controls, and the actions and values of each.
class Catalog {
 public:
  // Opens every screen on the project in the control's store.
  explicit Catalog(Ostrand& control);

  // Keeps one screen, by its name in any case; false when there is none.
  bool Keep(std::string_view screen);
  // In the order of the visits.
  [[nodiscard]] std::vector<std::string_view> Names() const;
  // Lines end in CR LF.
  [[nodiscard]] std::string Text() const;
  // An array of objects.
  [[nodiscard]] std::string Json() const;

 private:
  struct Part {
    std::string name;
    ControlKind kind;
    std::string caption;
    std::string action;  // empty for one that is only shown
    bool spins = false;
    std::optional<double> min;
    std::optional<double> max;
    std::vector<std::string> items;
  };
  struct Entry {
    std::string name;
    std::string caption;
    std::string text;
    std::vector<Part> controls;
    std::vector<std::string> opens;
  };

  void add(const Screen& screen);
  Entry& entryOf(const Screen& screen);
  static Part partOf(const Control& control);

  std::deque<Entry> entries_;  // a deque, so that entries do not move
};

// The items of a list, each in quotes after a blank; consecutive numbers as the first and the last.
std::string ItemsText(const std::vector<std::string>& items);
// The visible items of a choice.
std::string ItemsText(const Choice& choice);

}  // namespace ostrand
