#include "services/XrefMessageBox.h"

#include <QMouseEvent>

CXrefMessageBox::CXrefMessageBox(QWidget* parent) : CZuUiThemedStatic(parent)
{
    setFocusPolicy(Qt::ClickFocus);
    setAccessibleName(QStringLiteral("Message"));
}

CXrefMessageBox::~CXrefMessageBox() = default;

void CXrefMessageBox::SetMessage(const QString& message)
{
    SetWindowText(message);
    setAccessibleDescription(message);
}

void CXrefMessageBox::mousePressEvent(QMouseEvent* event)
{
    CZuUiThemedStatic::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        setFocus(Qt::MouseFocusReason);
}
