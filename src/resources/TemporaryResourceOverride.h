#pragma once

#include "kvxreftroveui_export.h"

namespace Util {
class ResourceModule;
}

/// Makes the library's resource module the current one for the scope, and puts the previous
/// one back at its end (only when it was changed).
class KVXREFTROVEUI_EXPORT CTemporaryResourceOverride
{
public:
    CTemporaryResourceOverride();
    /// Makes @p module current instead; null changes nothing.
    explicit CTemporaryResourceOverride(const Util::ResourceModule* module);
    ~CTemporaryResourceOverride();
    CTemporaryResourceOverride(const CTemporaryResourceOverride&) = delete;
    CTemporaryResourceOverride& operator=(const CTemporaryResourceOverride&) = delete;

private:
    const Util::ResourceModule* m_previous = nullptr;
    bool m_changed = false;
};
