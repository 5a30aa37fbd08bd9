#pragma once

#include "kvxreftroveui_export.h"
#include "views/editors/InPlaceComboBoxCtrl.h"

/// The details list's drop-down for the reference type: the choices are the library's texts
/// for an attached and an overlaid reference, preset with the cell's current text. Its list
/// always shows its scroll bar, greyed when there is nothing to scroll, so that the list looks
/// the same however many choices it has.
class KVXREFTROVEUI_EXPORT CXrefInPlaceComboBoxCtrl : public CInPlaceComboBoxCtrl
{
    Q_OBJECT
public:
    CXrefInPlaceComboBoxCtrl(int item, int subItem, const QString& currentText);
    ~CXrefInPlaceComboBoxCtrl() override;

    /// The library's text for a value that differs between the selected references, loaded
    /// once, when the first of these combo boxes is made, and shared by all of them.
    static const QString& VariesText();
};
