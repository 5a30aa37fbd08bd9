#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiGroupCtrl.h"

/// One of the panel's two collapsible groups. Its page buttons show the library's icons named
/// by the page keys, in the variant for the current theme.
class KVXREFTROVEUI_EXPORT CXrefGroupCtrl : public CZuUiGroupCtrl
{
    Q_OBJECT
public:
    explicit CXrefGroupCtrl(QWidget* parent = nullptr);

protected:
    QIcon PageIcon(const QString& key) const override;
};
