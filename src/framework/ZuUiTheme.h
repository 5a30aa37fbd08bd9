#pragma once

#include "kvuiframework_export.h"

#include <QColor>
#include <QObject>
#include <QPalette>

/// The host's colour theme: a light and a dark colour set, one of them active. Every themed
/// control paints with GetColor and repaints when themeChanged is emitted.
class KVUIFRAMEWORK_EXPORT CZuUiTheme : public QObject
{
    Q_OBJECT
public:
    /// Colour roles. Background is role 0: the preview pane and the panel fill with it.
    enum Color {
        Background = 0,
        Text,
        Border,
        SelectionBackground,
        SelectionText,
        InactiveSelectionBackground,
        ReadOnlyText,
        ReadOnlySelectedText,
        HeaderBackground,
        HeaderText,
        ButtonFace,
        ButtonHover,
        ButtonPressed,
        DisabledText,
        Accent,
        SplitterBar,
        GroupHeaderBackground,
        GroupHeaderText,
        ActiveGroupHeaderBackground,
        FocusFrame,
        ToolTipBackground,
        ToolTipText,
        AlternateBackground,
        GridLine,
        ColorCount
    };
    Q_ENUM(Color)

    /// The process-wide theme.
    static CZuUiTheme& Instance();

    QColor GetColor(Color role) const;
    QColor GetColor(int role) const;
    bool IsDarkTheme() const { return m_dark; }
    /// Switches the colour set and emits themeChanged when it changes.
    void SetDarkTheme(bool dark);

    /// A widget palette made of the active colour set.
    QPalette Palette() const;

signals:
    void themeChanged(bool dark);

private:
    CZuUiTheme();
    bool m_dark = false;
};
