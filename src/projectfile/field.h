// How a key of the project file is tied to its member.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "model/store.h"

namespace ostrand::ORVUS_GENFILE {

// How a value is written in the file.
enum class Form : std::uint8_t {
  kStr,          // number, a blank in front of one that is not negative
  kLead,         // written as kStr; the number at the head of the text is read
  kPlain,        // number without that blank
  kTime,         // written as kPlain; read as microseconds or, ending in "mSecs", milliseconds
  kTruth,        // written as 0 or -1; True and False are read too
  kText,         // the text unchanged
  kTextIfAny,    // the same, left out when empty
  kTrimmed,      // written without its outer blanks
  kExcept,       // a text left out when it is "0"
  kResolution,   // a text; an old numeric value means "FP2" (0) or "IEEE4"
  kWrittenOnly,  // a text that is not read
};

// A record that is a single value rather than a group of members.
template <class Record>
inline constexpr bool kSingleValue =
    std::is_arithmetic_v<Record> || std::is_same_v<Record, std::string>;

struct Itself {};

template <class Record, bool = kSingleValue<Record>>
struct MemberOf {
  using Type = std::variant<i16 Record::*, i32 Record::*, float Record::*, double Record::*,
                            std::string Record::*>;
};
template <class Record>
struct MemberOf<Record, true> {
  using Type = Itself;
};

// One key of the file. `limit` is the largest value of a count; larger ones are cut to it on
// reading, so that no count ever reaches past its array. 0 for members that count nothing.
template <class Record>
struct Field {
  std::string_view key;
  Form form = Form::kStr;
  typename MemberOf<Record>::Type member{};
  i16 limit = 0;
};

// Calls `use` with the value of the field in the record.
template <class Record, class Use>
void Visit(const Field<Record>& field, Record& record, Use&& use) {
  if constexpr (kSingleValue<Record>) {
    use(record);
  } else {
    std::visit([&](auto member) { use(record.*member); }, field.member);
  }
}

}  // namespace ostrand::ORVUS_GENFILE
