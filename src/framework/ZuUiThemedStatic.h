#pragma once

#include "kvuiframework_export.h"

#include <QWidget>

/// A one-line text label that paints with the host theme's colours and follows theme changes.
/// Text that does not fit is elided at the right; the full text is its tool tip.
class KVUIFRAMEWORK_EXPORT CZuUiThemedStatic : public QWidget
{
    Q_OBJECT
public:
    explicit CZuUiThemedStatic(QWidget* parent = nullptr);

    QString WindowText() const { return m_text; }
    /// Repaints only when the text changes.
    void SetWindowText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateToolTip();
    QString m_text;
};
