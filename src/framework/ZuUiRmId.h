#pragma once

#include "kvuiframework_export.h"

#include <QString>

namespace Util {
class ResourceModule;
}

/// Names one icon, bitmap or cursor resource: the module that holds it and its name. A numeric
/// id names the resource by its decimal digits. A null module means the current resource module
/// (Util::CurrentResourceModule). An id without a name is null.
class KVUIFRAMEWORK_EXPORT CZuUiRmId
{
public:
    CZuUiRmId() = default;
    CZuUiRmId(const Util::ResourceModule* module, QString name)
        : m_module(module), m_name(std::move(name))
    {}
    CZuUiRmId(const Util::ResourceModule* module, unsigned id)
        : m_module(module), m_name(QString::number(id))
    {}
    CZuUiRmId(const Util::ResourceModule* module, const char* name)
        : m_module(module), m_name(QString::fromLatin1(name))
    {}

    const Util::ResourceModule* Module() const { return m_module; }
    const QString& Name() const { return m_name; }
    bool IsNull() const { return m_name.isEmpty(); }

    friend bool operator==(const CZuUiRmId& a, const CZuUiRmId& b)
    {
        return a.m_module == b.m_module && a.m_name == b.m_name;
    }
    friend bool operator!=(const CZuUiRmId& a, const CZuUiRmId& b) { return !(a == b); }

private:
    const Util::ResourceModule* m_module = nullptr;
    QString m_name;
};
