#include "host/SystemVariables.h"

#include <QHash>

namespace {

QHash<QString, QVariant> defaultTable()
{
    return {{QStringLiteral("TOOLTIPS"), 1},
            {QStringLiteral("DWGCOMPAREMODE"), 0},
            {QStringLiteral("DWGTITLED"), 0}};
}

QHash<QString, QVariant>& table()
{
    static QHash<QString, QVariant> variables = defaultTable();
    return variables;
}

KvSystemVariables::Provider& provider()
{
    static KvSystemVariables::Provider current;
    return current;
}

} // namespace

int kvedGetVar(const wchar_t* name, QVariant* value)
{
    if (!name || !*name || !value)
        return kKvStatusError;
    const QString key = QString::fromWCharArray(name).toUpper();
    if (const auto& answer = provider()) {
        QVariant result;
        const int status = answer(key, result);
        if (status == kKvStatusNormal)
            *value = result;
        return status;
    }
    const auto it = table().constFind(key);
    if (it == table().constEnd())
        return kKvStatusError;
    *value = *it;
    return kKvStatusNormal;
}

KvSystemVariables::Provider KvSystemVariables::SetProvider(Provider replacement)
{
    Provider old = std::move(provider());
    provider() = std::move(replacement);
    return old;
}

void KvSystemVariables::Set(const QString& name, const QVariant& value)
{
    table().insert(name.toUpper(), value);
}

void KvSystemVariables::Remove(const QString& name)
{
    table().remove(name.toUpper());
}

std::optional<QVariant> KvSystemVariables::TableValue(const QString& name)
{
    const auto it = table().constFind(name.toUpper());
    if (it == table().constEnd())
        return std::nullopt;
    return *it;
}

void KvSystemVariables::ResetDefaults()
{
    table() = defaultTable();
}

std::optional<int> KvSystemVariables::ReadInt(const wchar_t* name)
{
    QVariant value;
    if (kvedGetVar(name, &value) != kKvStatusNormal)
        return std::nullopt;
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::UInt:
        return value.toInt();
    default:
        return std::nullopt;
    }
}
