// How screens open other screens: by name, with the data to work on.
#pragma once

#include <memory>
#include <string_view>

#include "controls/screen.h"

namespace ostrand {

// A request for a screen. Its data is a plain struct declared in the folder of that screen or one
// below; the caller knows the struct, not the screen.
class ScreenRequest {
 public:
  explicit ScreenRequest(std::string_view screen) : screen_(screen) {}
  virtual ~ScreenRequest() = default;
  ScreenRequest(const ScreenRequest&) = delete;
  ScreenRequest& operator=(const ScreenRequest&) = delete;

  [[nodiscard]] std::string_view Screen() const { return screen_; }

 private:
  std::string_view screen_;
};

template <class Data>
class RequestWith final : public ScreenRequest {
 public:
  RequestWith(std::string_view screen, Data& data) : ScreenRequest(screen), data_(data) {}
  [[nodiscard]] Data& Get() const { return data_; }

 private:
  Data& data_;
};

// Makes every screen of the program.
class ScreenFactory {
 public:
  virtual ~ScreenFactory() = default;
  // Null for an unknown screen or unsuitable data.
  [[nodiscard]] virtual std::unique_ptr<Screen> Make(const ScreenContext& context,
                                                     ScreenRequest& request) const = 0;
};

// A screen by name. The data must outlive it; null as above.
std::unique_ptr<Screen> MakeScreen(const ScreenContext& context, std::string_view screen);
template <class Data>
std::unique_ptr<Screen> MakeScreen(const ScreenContext& context, std::string_view screen,
                                   Data& data) {
  RequestWith<Data> request(screen, data);
  return context.screens.Make(context, request);
}

// Shows a screen until it ends; true when it ended with Done.
bool OpenScreen(const ScreenContext& context, const std::unique_ptr<Screen>& screen);
template <class Data>
bool OpenScreen(const ScreenContext& context, std::string_view screen, Data& data) {
  return OpenScreen(context, MakeScreen(context, screen, data));
}

}  // namespace ostrand
