#pragma once

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "host/SystemVariables.h"

#include <QString>
#include <QVariant>

#include <optional>

/// Sets the DPI scale for one test and restores the previous state afterwards.
class ScopedDpiScale
{
public:
    ScopedDpiScale(double x, double y)
        : m_had(CZuUiHiDpi::HasOverride()), m_x(CZuUiHiDpi::GetMonitorDpiXScale()),
          m_y(CZuUiHiDpi::GetMonitorDpiYScale())
    {
        CZuUiHiDpi::SetOverride(x, y);
    }
    explicit ScopedDpiScale(double scale) : ScopedDpiScale(scale, scale) {}
    ~ScopedDpiScale()
    {
        if (m_had)
            CZuUiHiDpi::SetOverride(m_x, m_y);
        else
            CZuUiHiDpi::ClearOverride();
    }
    ScopedDpiScale(const ScopedDpiScale&) = delete;
    ScopedDpiScale& operator=(const ScopedDpiScale&) = delete;

private:
    bool m_had;
    double m_x;
    double m_y;
};

/// Sets (or, with no value, removes) one host system variable for one test.
class ScopedSystemVariable
{
public:
    ScopedSystemVariable(const QString& name, std::optional<QVariant> value)
        : m_name(name), m_previous(KvSystemVariables::TableValue(name))
    {
        if (value)
            KvSystemVariables::Set(name, *value);
        else
            KvSystemVariables::Remove(name);
    }
    ScopedSystemVariable(const QString& name, int value)
        : ScopedSystemVariable(name, QVariant(value))
    {}
    ~ScopedSystemVariable()
    {
        if (m_previous)
            KvSystemVariables::Set(m_name, *m_previous);
        else
            KvSystemVariables::Remove(m_name);
    }
    ScopedSystemVariable(const ScopedSystemVariable&) = delete;
    ScopedSystemVariable& operator=(const ScopedSystemVariable&) = delete;

private:
    QString m_name;
    std::optional<QVariant> m_previous;
};

/// Switches the colour theme for one test.
class ScopedTheme
{
public:
    explicit ScopedTheme(bool dark) : m_previous(CZuUiTheme::Instance().IsDarkTheme())
    {
        CZuUiTheme::Instance().SetDarkTheme(dark);
    }
    ~ScopedTheme() { CZuUiTheme::Instance().SetDarkTheme(m_previous); }
    ScopedTheme(const ScopedTheme&) = delete;
    ScopedTheme& operator=(const ScopedTheme&) = delete;

private:
    bool m_previous;
};
