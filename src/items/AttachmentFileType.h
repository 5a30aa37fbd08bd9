#pragma once

namespace Attachment {
namespace FileType {

/// The file-type code of a reference. The library interprets none of the host's codes; the base
/// item answers 64.
struct Enum
{
    int value = 64;

    constexpr Enum() = default;
    constexpr Enum(int code) : value(code) {}
    constexpr operator int() const { return value; }
};

} // namespace FileType
} // namespace Attachment
