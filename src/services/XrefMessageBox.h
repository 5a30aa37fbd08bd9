#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiThemedStatic.h"

/// The panel's one-line message strip. Despite its name it is not a dialog: it shows whatever the
/// panel or the host last told it, in the theme's colours. The host creates it and shares it with
/// the panel.
class KVXREFTROVEUI_EXPORT CXrefMessageBox : public CZuUiThemedStatic
{
    Q_OBJECT
public:
    explicit CXrefMessageBox(QWidget* parent = nullptr);
    ~CXrefMessageBox() override;

    /// Shows @p message; an empty text clears the strip.
    void SetMessage(const QString& message);
    QString Message() const { return WindowText(); }

protected:
    /// A click gives the strip the keyboard focus (so its text can be reached by assistive
    /// tools); no event is raised.
    void mousePressEvent(QMouseEvent* event) override;
};
