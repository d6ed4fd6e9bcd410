// How a key of the project file is tied to its member.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

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

enum class ValueType : std::uint8_t { kInt16, kInt32, kFloat, kDouble, kText };

// A reference to a value in the store, of one of the types that a file holds, or to none.
class Value {
 public:
  Value() = default;
  Value(i16& value) : type_(ValueType::kInt16), at_(&value) {}
  Value(i32& value) : type_(ValueType::kInt32), at_(&value) {}
  Value(float& value) : type_(ValueType::kFloat), at_(&value) {}
  Value(double& value) : type_(ValueType::kDouble), at_(&value) {}
  Value(std::string& value) : type_(ValueType::kText), at_(&value) {}

  [[nodiscard]] bool IsNone() const { return at_ == nullptr; }
  // Calls `use` with the value itself and returns the result; there must be one.
  template <class Use>
  auto Visit(Use&& use) const {
    switch (type_) {
      case ValueType::kInt16:
        return use(*static_cast<i16*>(at_));
      case ValueType::kInt32:
        return use(*static_cast<i32*>(at_));
      case ValueType::kFloat:
        return use(*static_cast<float*>(at_));
      case ValueType::kDouble:
        return use(*static_cast<double*>(at_));
      case ValueType::kText:
        break;
    }
    return use(*static_cast<std::string*>(at_));
  }

 private:
  ValueType type_ = ValueType::kInt16;
  void* at_ = nullptr;
};

// The member of a record that a key holds. A std::variant of the pointers would take seconds to
// compile.
template <class Record, bool = kSingleValue<Record>>
class Member {
 public:
  constexpr Member(i16 Record::*at) : type_(ValueType::kInt16), int16_(at) {}
  constexpr Member(i32 Record::*at) : type_(ValueType::kInt32), int32_(at) {}
  constexpr Member(float Record::*at) : type_(ValueType::kFloat), float_(at) {}
  constexpr Member(double Record::*at) : type_(ValueType::kDouble), double_(at) {}
  constexpr Member(std::string Record::*at) : type_(ValueType::kText), text_(at) {}

  [[nodiscard]] Value Of(Record& record) const {
    switch (type_) {
      case ValueType::kInt16:
        return record.*int16_;
      case ValueType::kInt32:
        return record.*int32_;
      case ValueType::kFloat:
        return record.*float_;
      case ValueType::kDouble:
        return record.*double_;
      case ValueType::kText:
        break;
    }
    return record.*text_;
  }

 private:
  ValueType type_;
  union {
    i16 Record::*int16_;
    i32 Record::*int32_;
    float Record::*float_;
    double Record::*double_;
    std::string Record::*text_;
  };
};

template <class Record>
class Member<Record, true> {
 public:
  [[nodiscard]] static Value Of(Record& record) { return record; }
};

// The text of a key before its brackets, in a fixed capacity so that one step copies it.
class KeyName {
 public:
  static constexpr std::size_t kCapacity = 24;

  constexpr KeyName() = default;
  constexpr KeyName(const char* text) { add(text); }
  constexpr KeyName(std::string_view prefix, const KeyName& key) {
    add(prefix);
    add(key.Text());
  }
  [[nodiscard]] constexpr std::string_view Text() const { return {text_.data(), size_}; }
  // Copies all of the capacity and returns the end of the text.
  char* CopyTo(char* to) const {
    std::memcpy(to, text_.data(), text_.size());
    return to + size_;
  }

 private:
  // A text that is too long does not compile.
  constexpr void add(std::string_view text) {
    for (const char c : text) text_[size_++] = c;
  }

  std::array<char, kCapacity> text_{};
  std::uint8_t size_ = 0;
};

// One key of the file. `limit` is the largest value of a count; larger ones are cut to it on
// reading, so that no count ever reaches past its array. 0 for members that count nothing.
template <class Record>
struct Field {
  KeyName key;
  Form form = Form::kStr;
  Member<Record> member{};
  i16 limit = 0;
};

}  // namespace ostrand::ORVUS_GENFILE
