#include "platform/moment_text.h"

#include "text/number.h"

namespace ostrand {
namespace {

std::string twoDigits(int number) { return PaddedNumberText(number, 2); }

std::string minutesAndSeconds(const platform::Moment& moment) {
  return ":" + twoDigits(moment.minute) + ":" + twoDigits(moment.second);
}

// Takes a number of at most four digits, and the mark that follows it, off the text.
std::optional<int> takeNumber(std::string_view& text, char mark) {
  int number = 0;
  std::size_t digits = 0;
  for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits) {
    if (digits == 4) return std::nullopt;
    number = number * 10 + (text[digits] - '0');
  }
  if (digits == 0 || digits == text.size() || text[digits] != mark) return std::nullopt;
  text.remove_prefix(digits + 1);
  return number;
}

bool isBetween(int low, int number, int high) { return low <= number && number <= high; }

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

std::optional<platform::Moment> MomentOfShortText(std::string_view text) {
  platform::Moment moment;
  const struct {
    int& number;
    char mark;
  } parts[] = {{moment.month, '/'}, {moment.day, '/'},    {moment.year, ' '},
               {moment.hour, ':'},  {moment.minute, ':'}, {moment.second, ' '}};
  for (const auto& part : parts) {
    const std::optional<int> number = takeNumber(text, part.mark);
    if (!number) return std::nullopt;
    part.number = *number;
  }
  if ((text != "AM" && text != "PM") || !isBetween(1, moment.month, 12) ||
      !isBetween(1, moment.day, 31) || !isBetween(1, moment.hour, 12) || moment.minute > 59 ||
      moment.second > 59) {
    return std::nullopt;
  }
  moment.hour = moment.hour % 12 + (text == "PM" ? 12 : 0);
  return moment;
}

}  // namespace ostrand
