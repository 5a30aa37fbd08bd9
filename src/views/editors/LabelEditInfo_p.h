#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <optional>

/// What an in-place editor tells its owner when an edit of one cell begins and when it ends.
/// The owner connects to the editor's beginLabelEdit and endLabelEdit signals before the
/// editor is created on screen, reads the record, and decides what to keep.
struct LabelEditInfo
{
    /// Which members carry a value.
    enum Mask : unsigned {
        MaskText = 0x0001,  ///< text is meaningful (every editor)
        MaskParam = 0x0004, ///< param is meaningful (the combo box)
    };

    int item = -1;   ///< row of the edited cell
    int subItem = 0; ///< column of the edited cell
    unsigned mask = 0;
    /// The editor's text; no value when the edit was cancelled with Escape.
    std::optional<QString> text;
    /// The data of the chosen entry (combo box only; invalid otherwise).
    QVariant param;
};

Q_DECLARE_METATYPE(LabelEditInfo)
