#pragma once

#include "kvxreftroveui_export.h"

#include "items/FileDataStatus.h"

#include <QString>

/// The texts of the reference status codes.
class KVXREFTROVEUI_EXPORT CXrefPanelCtrlItemStatus
{
public:
    /// The text of @p status; empty for a code without one (12, 14, negative, above 21).
    static QString ToString(Trove::FileDataStatus::Value status);
    /// True for a known code; otherwise @p status becomes code 0 and the answer is false.
    static bool Validate(Trove::FileDataStatus::Value& status);
};
