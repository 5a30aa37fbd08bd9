#pragma once

#include "kvuiframework_export.h"

#include "framework/ZuUiRmId.h"

#include <QIcon>
#include <QToolButton>

/// A flat tool bar button that shows one bitmap resource and paints itself with the host theme's
/// colours. Its window text follows the owner-draw convention "KEY|Label": AutoLoad takes the
/// bitmap named KEY and uses Label as the button's text (read by screen readers, and painted only
/// when the bitmap is missing). The bitmap follows theme changes (dark variants load by
/// themselves).
///
/// Keyboard: the button takes focus with Tab (never by a click), shows a focus frame once focus
/// came from the keyboard, and is pressed with Space, Enter or Return.
class QPainter;

class KVUIFRAMEWORK_EXPORT CZuUiBitmapButton : public QToolButton
{
    Q_OBJECT
public:
    explicit CZuUiBitmapButton(QWidget* parent = nullptr);
    ~CZuUiBitmapButton() override;

    /// The "KEY|Label" text; AutoLoad reads it. Changing it loads nothing by itself.
    void SetWindowText(const QString& text);
    QString GetWindowText() const { return m_windowText; }

    /// Loads the bitmap named before the first "|" of the window text (the whole text when it has
    /// none) and takes the part after it as the label. False when the bitmap does not exist; the
    /// label is taken all the same and the previous bitmap is dropped.
    bool AutoLoad();
    /// Loads bitmap resource @p key of the current resource module (its dark variant in the dark
    /// theme). The module is remembered, so theme changes reload from the same module later.
    /// False when there is no such bitmap; the button then keeps the bitmap it had.
    bool LoadBitmap(const QString& key);
    /// The key of the bitmap shown; empty when none is.
    QString BitmapKey() const { return m_bitmapId.Name(); }
    bool HasBitmap() const { return !m_bitmap.isNull(); }
    QString Label() const { return text(); }

    /// Free space kept around the bitmap, in device-independent pixels (default 3). The picture
    /// fills the rest of the image part.
    void SetImageBorder(int dip);
    int ImageBorder() const { return m_imageBorder; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

    /// The part of the button that shows the bitmap; the whole button here.
    virtual QRect ImageRect() const;
    /// Whether the image part is drawn pressed.
    virtual bool ImagePartPressed() const { return isDown(); }
    /// Paints everything between the background and the focus frame.
    virtual void PaintParts(QPainter& painter);
    /// The hover or pressed face of one part; nothing when it is neither.
    void PaintFace(QPainter& painter, const QRect& area, bool pressed, bool hover) const;
    /// Whether the pointer is over the enabled button.
    bool IsHot() const { return isEnabled() && underMouse(); }
    /// Whether the focus frame is to be drawn now.
    bool ShowsFocusCue() const { return hasFocus() && m_keyboardFocus; }

private:
    void reloadForTheme();

    QString m_windowText;
    CZuUiRmId m_bitmapId;
    QIcon m_bitmap;
    int m_imageBorder = 3;
    bool m_keyboardFocus = false;
};
