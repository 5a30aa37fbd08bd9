#pragma once

#include "kvxrefutil_export.h"

#include <QString>

#include <string>

class QCollator;

namespace Util {

/// Orders two texts the way people expect in a file list. Returns a negative number, zero or a
/// positive number.
///
/// @p orderMode 1 is natural order: runs of digits compare by their numeric value ("Ref 2" before
/// "Ref 10") and letters by the user's collation; 0 compares code units. @p caseMode 1 ignores
/// letter case, 0 respects it. Other values count as 1.
KVXREFUTIL_EXPORT int Order(const std::wstring& a, const std::wstring& b, int orderMode,
                            int caseMode);
KVXREFUTIL_EXPORT int Order(const QString& a, const QString& b, int orderMode, int caseMode);

/// The collator behind natural order, for callers that sort many rows and want sort keys
/// (QCollator::sortKey) computed once per row. It is built for the user's locale, or for English
/// when the user's locale is the C locale, whose collation would silently ignore numbers.
/// One per thread; valid for the thread's life.
KVXREFUTIL_EXPORT const QCollator& NaturalCollator(int caseMode);

} // namespace Util
