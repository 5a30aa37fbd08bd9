#pragma once

#include <cstdint>

namespace Trove {
namespace FileDataStatus {

/// The known status codes. 12 and 14 are not codes: they have no text and do not validate.
enum Code : std::int32_t {
    Code0 = 0,
    Code1 = 1,
    Code2 = 2,
    Code3 = 3,
    Code4 = 4,
    Code5 = 5,
    Code6 = 6,
    Code7 = 7,
    Code8 = 8,
    Code9 = 9,
    Code10 = 10,
    Code11 = 11,
    Code13 = 13,
    Code15 = 15,
    Code16 = 16,
    Code17 = 17,
    Code18 = 18,
    Code19 = 19,
    Code20 = 20,
    Code21 = 21,
};

/// The status shown in the list's status column: one code, carried by value. Any 32-bit value
/// can be held; only the codes above have a text.
struct Value
{
    std::int32_t code = Code0;

    constexpr Value() = default;
    constexpr Value(std::int32_t value) : code(value) {}
    constexpr operator std::int32_t() const { return code; }
};

} // namespace FileDataStatus
} // namespace Trove
