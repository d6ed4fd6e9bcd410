#include "model/can_config.h"

#include <algorithm>
#include <array>
#include <optional>

#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

struct Baud {
  std::string_view text;
  i16 quanta;
  i16 seg1;
  i16 seg2;
};

constexpr std::array<Baud, cCanModule::kNumBaudRates> kBauds = {{
    {"1 M", 1, 5, 2},
    {"800 K", 1, 7, 2},
    {"500 K", 2, 5, 2},
    {"250 K", 4, 5, 2},
    {"125 K", 8, 5, 2},
    {"50 K", 16, 7, 2},
    {"20 K", 40, 7, 2},
}};

const Baud& baudOf(i32 code) {
  static constexpr Baud kUnknown = {"", 0, 0, 0};
  const bool known = code >= 0 && code < cCanModule::kNumBaudRates;
  return known ? kBauds[static_cast<std::size_t>(code)] : kUnknown;
}

struct Field {
  i16 startBit;
  int width;

  [[nodiscard]] std::uint32_t Mask() const { return (1U << width) - 1; }
};

// From the priority to the source address.
constexpr std::array<Field, 6> kFields = {{{26, 3}, {25, 1}, {24, 1}, {16, 8}, {8, 8}, {0, 8}}};

const Field& fieldOf(OrvusCanJ1939Fields field) {
  static constexpr Field kUnknown = {0, 0};
  const bool known = field >= 0 && field < static_cast<int>(kFields.size());
  return known ? kFields[static_cast<std::size_t>(field)] : kUnknown;
}

std::string identifierText(std::uint32_t value, bool hex) {
  return hex ? "&H" + HexText(value) : NumberText(static_cast<std::int64_t>(value));
}

// The unsigned value of hexadecimal digits, at most `limit`.
std::optional<std::uint32_t> hexValue(std::string_view digits, std::uint32_t limit) {
  if (digits.empty() || digits.find_first_not_of("0123456789ABCDEFabcdef") != digits.npos) {
    return std::nullopt;
  }
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() > 8) return limit;
  const double value = digits.empty() ? 0 : *ToDouble("&H" + std::string(digits));
  return static_cast<std::uint32_t>(std::min<double>(value, limit));
}

std::optional<std::uint32_t> decimalValue(std::string_view text, std::uint32_t limit) {
  const auto value = ToDouble(text);
  if (!value) return std::nullopt;
  return static_cast<std::uint32_t>(std::clamp<double>(RoundHalfEven(*value), 0, limit));
}

}  // namespace

void cCanModule::SetMode(i32 loggerType, i16 module) {
  loggerType_ = loggerType;
  module_ = module;
}

i16 cCanModule::TimeQuanta() const { return baudOf(BaudRate).quanta; }
i16 cCanModule::TSeg1() const { return baudOf(BaudRate).seg1; }
i16 cCanModule::TSeg2() const { return baudOf(BaudRate).seg2; }
std::string_view cCanModule::BaudRateText(i32 code) { return baudOf(code).text; }

void cCanConfig::SetMode(OrvusCanDataIDTypes type) { dataIdType_ = type; }

std::uint32_t cCanConfig::largest() const {
  return dataIdType_ == ORVUS_CAN_DATAID_11BIT ? 0x7FFU : 0x1FFFFFFFU;
}

void cCanConfig::setIdentifier(Identifier& identifier, std::string_view text) const {
  text = Trim(text);
  const bool hex = SameText(text.substr(0, 2), "&H");
  const auto value = hex ? hexValue(text.substr(2), largest()) : decimalValue(text, largest());
  if (!value) return;
  identifier = {identifierText(*value, hex), *value, hex};
}

std::uint8_t cCanConfig::J1939_FieldVal(OrvusCanJ1939Fields field) const {
  if (dataIdType_ == ORVUS_CAN_DATAID_11BIT) return 0;
  const Field& place = fieldOf(field);
  return static_cast<std::uint8_t>((dataId_.value >> place.startBit) & place.Mask());
}

void cCanConfig::J1939_FieldVal(OrvusCanJ1939Fields field, std::uint8_t value) {
  if (dataIdType_ == ORVUS_CAN_DATAID_11BIT) return;
  const Field& place = fieldOf(field);
  const std::uint32_t bits = std::min<std::uint32_t>(value, place.Mask());
  dataId_.value = (dataId_.value & ~(place.Mask() << place.startBit)) | (bits << place.startBit);
  dataId_.text = identifierText(dataId_.value, dataId_.hex);
}

std::string cCanConfig::J1939_FieldBinString(OrvusCanJ1939Fields field) const {
  const std::uint8_t value = J1939_FieldVal(field);
  std::string bits;
  for (int bit = fieldOf(field).width - 1; bit >= 0; --bit) bits += ((value >> bit) & 1) + '0';
  return bits;
}

i16 cCanConfig::J1939_FieldStartBit(OrvusCanJ1939Fields field) { return fieldOf(field).startBit; }

std::string cCanConfig::PGNVal() const {
  if (dataIdType_ == ORVUS_CAN_DATAID_11BIT) return {};
  const std::uint32_t format = J1939_FieldVal(ORVUS_CAN_J1939_ID_PDUFORMAT);
  const std::uint32_t specific = J1939_FieldVal(ORVUS_CAN_J1939_ID_PDUSPECIFIC);
  return identifierText(format * 256 + specific, dataId_.hex);
}

}  // namespace ostrand
