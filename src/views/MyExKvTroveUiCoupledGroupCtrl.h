#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiCoupledGroupCtrl.h"

/// The library's layer over the framework's coupled group control. Hosts that look for the
/// library's coupled groups by class (qobject_cast) find every one of them through this class,
/// whichever concrete layout it has; the layout itself is left to the class below.
class KVXREFTROVEUI_EXPORT MyExKvTroveUiCoupledGroupCtrl : public CZuUiCoupledGroupCtrl
{
    Q_OBJECT
public:
    explicit MyExKvTroveUiCoupledGroupCtrl(QWidget* parent = nullptr)
        : CZuUiCoupledGroupCtrl(parent)
    {}
};
