#include "platform/moment_text.h"

#include "text/number.h"

namespace ostrand {
namespace {

std::string twoDigits(int number) {
  std::string text = NumberText(number);
  return text.size() < 2 ? "0" + text : text;
}

std::string minutesAndSeconds(const platform::Moment& moment) {
  return ":" + twoDigits(moment.minute) + ":" + twoDigits(moment.second);
}

}  // namespace

std::string DateText(const platform::Moment& moment) {
  return twoDigits(moment.month) + "-" + twoDigits(moment.day) + "-" + NumberText(moment.year);
}

std::string TimeText(const platform::Moment& moment) {
  return twoDigits(moment.hour) + minutesAndSeconds(moment);
}

std::string ShortMomentText(const platform::Moment& moment) {
  const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
  return NumberText(moment.month) + "/" + NumberText(moment.day) + "/" + NumberText(moment.year) +
         " " + NumberText(hour) + minutesAndSeconds(moment) + (moment.hour < 12 ? " AM" : " PM");
}

}  // namespace ostrand
