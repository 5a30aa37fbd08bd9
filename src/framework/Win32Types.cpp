#include "framework/Win32Types.h"

#include <algorithm>
#include <cstdlib>

QColor ToQColor(COLORREF color)
{
    return QColor(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
}

COLORREF ToColorRef(const QColor& color)
{
    return MakeColorRef(color.red(), color.green(), color.blue());
}

bool IsBold(const LOGFONTW& font)
{
    return font.lfWeight >= 700;
}

QFont ToQFont(const LOGFONTW& font, const QFont& base)
{
    QFont result = base;
    size_t length = 0;
    while (length < 32 && font.lfFaceName[length])
        ++length;
    if (length > 0)
        result.setFamily(QString::fromWCharArray(font.lfFaceName, qsizetype(length)));
    if (font.lfHeight != 0)
        result.setPixelSize(std::abs(font.lfHeight));
    if (font.lfWeight > 0)
        result.setWeight(QFont::Weight(std::clamp(int(font.lfWeight), 1, 1000)));
    result.setItalic(font.lfItalic != 0);
    result.setUnderline(font.lfUnderline != 0);
    result.setStrikeOut(font.lfStrikeOut != 0);
    return result;
}
