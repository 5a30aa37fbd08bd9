#include "framework/ZuUiTheme.h"

#include <array>

namespace {

using ColorSet = std::array<QRgb, CZuUiTheme::ColorCount>;

// Two complete colour sets. The dark one keeps the contrast ratios of the light one so that the
// status colours of the icons read equally on both.
constexpr ColorSet kLight = {
    0xFFF5F5F5, // Background
    0xFF1E1E1E, // Text
    0xFFC4C4C4, // Border
    0xFFCCE4F7, // SelectionBackground
    0xFF000000, // SelectionText
    0xFFE3E3E3, // InactiveSelectionBackground
    0xFF6E6E6E, // ReadOnlyText
    0xFF3C3C3C, // ReadOnlySelectedText
    0xFFEAEAEA, // HeaderBackground
    0xFF1E1E1E, // HeaderText
    0xFFF0F0F0, // ButtonFace
    0xFFE0EEF9, // ButtonHover
    0xFFC7DFF3, // ButtonPressed
    0xFFA0A0A0, // DisabledText
    0xFF0F6CBD, // Accent
    0xFFDADADA, // SplitterBar
    0xFFE6E6E6, // GroupHeaderBackground
    0xFF1E1E1E, // GroupHeaderText
    0xFFD6E6F5, // ActiveGroupHeaderBackground
    0xFF0F6CBD, // FocusFrame
    0xFFFFFFFF, // ToolTipBackground
    0xFF1E1E1E, // ToolTipText
    0xFFFFFFFF, // AlternateBackground
    0xFFE5E5E5, // GridLine
};

constexpr ColorSet kDark = {
    0xFF2B2B2B, // Background
    0xFFE6E6E6, // Text
    0xFF4A4A4A, // Border
    0xFF264F78, // SelectionBackground
    0xFFFFFFFF, // SelectionText
    0xFF3A3D41, // InactiveSelectionBackground
    0xFF9A9A9A, // ReadOnlyText
    0xFFC8C8C8, // ReadOnlySelectedText
    0xFF333333, // HeaderBackground
    0xFFE6E6E6, // HeaderText
    0xFF3A3A3A, // ButtonFace
    0xFF45494E, // ButtonHover
    0xFF2F4F6F, // ButtonPressed
    0xFF6E6E6E, // DisabledText
    0xFF4CA6FF, // Accent
    0xFF3C3C3C, // SplitterBar
    0xFF363636, // GroupHeaderBackground
    0xFFE6E6E6, // GroupHeaderText
    0xFF2F4560, // ActiveGroupHeaderBackground
    0xFF4CA6FF, // FocusFrame
    0xFF3C3C3C, // ToolTipBackground
    0xFFE6E6E6, // ToolTipText
    0xFF252525, // AlternateBackground
    0xFF3A3A3A, // GridLine
};

} // namespace

CZuUiTheme::CZuUiTheme() = default;

CZuUiTheme& CZuUiTheme::Instance()
{
    static CZuUiTheme* theme = new CZuUiTheme; // lives until the process ends, like the host's
    return *theme;
}

QColor CZuUiTheme::GetColor(Color role) const
{
    return GetColor(int(role));
}

QColor CZuUiTheme::GetColor(int role) const
{
    if (role < 0 || role >= ColorCount)
        return QColor();
    return QColor::fromRgba((m_dark ? kDark : kLight)[size_t(role)]);
}

void CZuUiTheme::SetDarkTheme(bool dark)
{
    if (m_dark == dark)
        return;
    m_dark = dark;
    emit themeChanged(dark);
}

QPalette CZuUiTheme::Palette() const
{
    QPalette palette;
    palette.setColor(QPalette::Window, GetColor(Background));
    palette.setColor(QPalette::WindowText, GetColor(Text));
    palette.setColor(QPalette::Base, GetColor(AlternateBackground));
    palette.setColor(QPalette::AlternateBase, GetColor(Background));
    palette.setColor(QPalette::Text, GetColor(Text));
    palette.setColor(QPalette::Button, GetColor(ButtonFace));
    palette.setColor(QPalette::ButtonText, GetColor(Text));
    palette.setColor(QPalette::Highlight, GetColor(SelectionBackground));
    palette.setColor(QPalette::HighlightedText, GetColor(SelectionText));
    palette.setColor(QPalette::ToolTipBase, GetColor(ToolTipBackground));
    palette.setColor(QPalette::ToolTipText, GetColor(ToolTipText));
    palette.setColor(QPalette::Mid, GetColor(Border));
    palette.setColor(QPalette::Dark, GetColor(Border));
    palette.setColor(QPalette::PlaceholderText, GetColor(DisabledText));
    palette.setColor(QPalette::Disabled, QPalette::Text, GetColor(DisabledText));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, GetColor(DisabledText));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, GetColor(DisabledText));
    palette.setColor(QPalette::Inactive, QPalette::Highlight,
                     GetColor(InactiveSelectionBackground));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, GetColor(Text));
    return palette;
}
