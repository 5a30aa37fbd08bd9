#pragma once

#include "kvxrefutil_export.h"

#include <string>

namespace Util {

/// Path helpers that read both "/" and "\\" as folder separators, since reference paths come
/// from drawings made on any system.
class KVXREFUTIL_EXPORT Path
{
public:
    /// The extension of the last path component with its leading dot (".dwg"), or an empty text
    /// when the name has none. A name that only starts with a dot (".profile") or ends with one
    /// ("name.") has no extension.
    static std::wstring GetExtension(const std::wstring& path);
    /// The last path component.
    static std::wstring GetFileName(const std::wstring& path);
};

} // namespace Util
