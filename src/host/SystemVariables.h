#pragma once

#include "kvhostservices_export.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <optional>

/// Status of a system-variable query that succeeded.
constexpr int kKvStatusNormal = 5100;
/// Status of a query for a variable that does not exist or could not be read.
constexpr int kKvStatusError = -5001;

/// Reads the host system variable @p name into @p value. Returns kKvStatusNormal on success and
/// another status otherwise (then @p value is left as it was).
KVHOSTSERVICES_EXPORT int kvedGetVar(const wchar_t* name, QVariant* value);

/// The host's system variables. By default an in-process table holds "TOOLTIPS" 1,
/// "DWGCOMPAREMODE" 0 and "DWGTITLED" 0; a real host installs a provider that answers from its
/// own settings. Names are compared without regard to case.
class KVHOSTSERVICES_EXPORT KvSystemVariables
{
public:
    using Provider = std::function<int(const QString& name, QVariant& value)>;

    /// Replaces the table with @p provider (empty: back to the table). Returns the old provider.
    static Provider SetProvider(Provider provider);

    /// Writes a variable of the in-process table.
    static void Set(const QString& name, const QVariant& value);
    /// Removes a variable from the table: queries for it then fail.
    static void Remove(const QString& name);
    /// The variable's value in the table, or nullopt when it has none.
    static std::optional<QVariant> TableValue(const QString& name);
    /// Restores the three default variables and drops every other one.
    static void ResetDefaults();

    /// The variable as an integer, only when the query succeeds and the value is an integer
    /// (a text "3" is not the integer 3).
    static std::optional<int> ReadInt(const wchar_t* name);
};
