#pragma once

#include <cstdint>

/// The state word a list row or a tree node keeps for its item. It has the classic layout, so
/// that items and hosts address it with the usual masks: 0x0010 bold, bits 8-11 the overlay
/// number, bits 12-15 the state image (0 none, n image n - 1). Sixteen bits: a row record of a
/// 100,000-row list pays for every byte.
class ItemStateWord
{
public:
    static constexpr unsigned kBold = 0x0010;
    static constexpr unsigned kOverlayMask = 0x0F00;
    static constexpr unsigned kStateImageMask = 0xF000;

    constexpr ItemStateWord() = default;

    /// The bits under @p mask.
    constexpr unsigned Masked(unsigned mask) const { return m_bits & mask; }
    /// Replaces the @p mask bits with those of @p state; bits above the word are dropped.
    constexpr void Write(unsigned state, unsigned mask)
    {
        m_bits = std::uint16_t((m_bits & ~mask) | (state & mask));
    }

    constexpr int Overlay() const { return int((m_bits & kOverlayMask) >> 8); }
    constexpr int StateImage() const { return int((m_bits & kStateImageMask) >> 12); }
    constexpr bool IsBold() const { return m_bits & kBold; }

    /// The bits that show overlay @p overlay.
    static constexpr unsigned OverlayBits(int overlay) { return unsigned(overlay) << 8; }
    /// The bits that show state image @p index; values above 15 lose their upper bits when
    /// written.
    static constexpr unsigned StateImageBits(unsigned index) { return index << 12; }
    /// The state image index held in @p bits.
    static constexpr unsigned StateImageOf(unsigned bits)
    {
        return ((bits & kStateImageMask) >> 12) & 15u;
    }

private:
    std::uint16_t m_bits = 0;
};
