#pragma once

#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A resource module in a temporary folder that serves as the library's resource module while it
/// lives. By default it falls back to the library's own module, so a test only writes the
/// resources it wants to differ ("menus/2080.json"); without fallback it holds nothing else.
class ScopedResourceModule
{
public:
    explicit ScopedResourceModule(bool fallBackToDefault = true)
        : m_previous(TroveUI::ResourceInstance())
    {
        m_module = std::make_unique<Util::ResourceModule>(
            m_dir.path(), QStringLiteral("test"),
            fallBackToDefault ? &TroveUI::DefaultResourceModule() : nullptr);
        TroveUI::SetResourceInstance(m_module.get());
    }
    ~ScopedResourceModule() { TroveUI::SetResourceInstance(m_previous); }
    ScopedResourceModule(const ScopedResourceModule&) = delete;
    ScopedResourceModule& operator=(const ScopedResourceModule&) = delete;

    /// Writes @p data to @p relative ("menus/2080.json") inside the module.
    bool Write(const QString& relative, const QByteArray& data)
    {
        const QString path = m_dir.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
               file.write(data) == data.size();
    }

    const Util::ResourceModule& Module() const { return *m_module; }

private:
    QTemporaryDir m_dir;
    const Util::ResourceModule* m_previous;
    std::unique_ptr<Util::ResourceModule> m_module;
};
