#pragma once

#include "kvuiframework_export.h"

#include "framework/ZuUiBitmapButton.h"

/// A bitmap button with a drop-down arrow part on its right. A left press on the arrow part (or
/// Alt+Down, F4 or the menu key) asks for the drop-down through ShowDropDown; a press on the rest
/// is an ordinary button press that ends in clicked(). What drops down is the owner's business:
/// by default the button emits dropDownRequested, subclasses may open a menu themselves.
class KVUIFRAMEWORK_EXPORT CZuUiThemedDropDownBitmapButton : public CZuUiBitmapButton
{
    Q_OBJECT
public:
    explicit CZuUiThemedDropDownBitmapButton(QWidget* parent = nullptr);
    ~CZuUiThemedDropDownBitmapButton() override;

    /// Width of the arrow part in device pixels (clamped to 0 and up); 0 hides it.
    void SetArrowWidth(int width);
    int GetArrowWidth() const { return m_arrowWidth; }
    /// Whether the last left press landed on the arrow part.
    bool GetMenuButtonSelected() const { return m_menuButtonSelected; }
    /// The arrow part, in widget coordinates; empty without arrow part.
    QRect ArrowRect() const;

    QSize sizeHint() const override;

signals:
    /// Emitted by the default ShowDropDown.
    void dropDownRequested();

protected:
    /// Shows whatever drops down. Runs inside the press that asked for it; when it returns, the
    /// press is over and no click follows.
    virtual void ShowDropDown();
    /// Draws the arrow part pressed while something is dropped down.
    void SetDropDownShowing(bool showing);

    QRect ImageRect() const override;
    bool ImagePartPressed() const override;
    void PaintParts(QPainter& painter) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    /// Runs ShowDropDown with the arrow part drawn pressed, then ends the press.
    void DropDownNow();

private:
    int m_arrowWidth = 0;
    bool m_menuButtonSelected = false;
    bool m_dropDownShowing = false;
};
