#pragma once

#include "kvxrefutil_export.h"

#include <QString>

#include <cstdarg>
#include <string>
#include <string_view>

namespace Util {

/// Formats @p format into @p out. "%1" to "%9" insert the first to ninth variable argument, each a
/// `const wchar_t*` (null inserts nothing); an argument may be used several times and in any order.
/// "%%" writes one "%"; a "%" followed by anything else is written as it stands. The caller passes
/// at least as many arguments as the highest placeholder number in @p format.
KVXREFUTIL_EXPORT void FormatMsgV(std::wstring& out, const wchar_t* format, va_list args);
KVXREFUTIL_EXPORT void FormatMsg(std::wstring& out, const wchar_t* format, ...);

/// Wide text from Qt or UTF-8 text.
KVXREFUTIL_EXPORT std::wstring MakeWideString(const QString& text);
KVXREFUTIL_EXPORT std::wstring MakeWideString(const char* utf8);
KVXREFUTIL_EXPORT std::wstring MakeWideString(const std::string& utf8);

/// Qt text from wide text: the same result as QString::fromStdWString, several times faster for
/// text without characters beyond the basic plane, which is nearly all text a panel shows.
KVXREFUTIL_EXPORT QString ToQString(std::wstring_view text);

} // namespace Util
