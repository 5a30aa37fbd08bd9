#pragma once

#include "kvuiframework_export.h"

#include <QWidget>

/// A picture pane that fills itself with the theme's background colour and follows theme
/// changes; derived panes draw their picture over it in DrawPreview. It takes the keyboard focus
/// with Tab and then shows a focus frame.
class KVUIFRAMEWORK_EXPORT CZuUiThemedPreview : public QWidget
{
    Q_OBJECT
public:
    explicit CZuUiThemedPreview(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Draws the picture over the background; @p client is the whole client area.
    virtual void DrawPreview(QPainter& painter, const QRect& client);
};
