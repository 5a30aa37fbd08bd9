#pragma once

#include "kvxreftroveui_export.h"

#include "toolbar/XrefMenuBmpButton.h"

/// The split button type of the reference tool bar's refresh, attach and change-path buttons.
class KVXREFTROVEUI_EXPORT CXrefBmpComboButton : public XrefMenuBmpButton
{
    Q_OBJECT
public:
    using XrefMenuBmpButton::XrefMenuBmpButton;
};
