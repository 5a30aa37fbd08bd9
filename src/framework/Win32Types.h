#pragma once

#include "kvuiframework_export.h"

#include <QColor>
#include <QFont>

#include <cstdint>

/// A colour as 0x00BBGGRR, the form item colours are given in.
using COLORREF = std::uint32_t;

constexpr COLORREF MakeColorRef(int red, int green, int blue)
{
    return COLORREF(red & 0xFF) | (COLORREF(green & 0xFF) << 8) | (COLORREF(blue & 0xFF) << 16);
}

KVUIFRAMEWORK_EXPORT QColor ToQColor(COLORREF color);
KVUIFRAMEWORK_EXPORT COLORREF ToColorRef(const QColor& color);

/// A font description as items carry it: height in pixels (negative: character height, positive:
/// cell height, 0: the default size), weight 100-900 (400 normal, 700 bold; 0 normal), style flags
/// and the face name.
struct LOGFONTW
{
    std::int32_t lfHeight = 0;
    std::int32_t lfWidth = 0;
    std::int32_t lfEscapement = 0;
    std::int32_t lfOrientation = 0;
    std::int32_t lfWeight = 0;
    std::uint8_t lfItalic = 0;
    std::uint8_t lfUnderline = 0;
    std::uint8_t lfStrikeOut = 0;
    std::uint8_t lfCharSet = 0;
    std::uint8_t lfOutPrecision = 0;
    std::uint8_t lfClipPrecision = 0;
    std::uint8_t lfQuality = 0;
    std::uint8_t lfPitchAndFamily = 0;
    wchar_t lfFaceName[32] = {};
};

/// The font that @p font describes, starting from @p base for whatever it leaves open (an empty
/// face name, a zero height).
KVUIFRAMEWORK_EXPORT QFont ToQFont(const LOGFONTW& font, const QFont& base);
KVUIFRAMEWORK_EXPORT bool IsBold(const LOGFONTW& font);
