#include "util/ResourceModule.h"

#include "util/ResourceFileCheck_p.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QResource>

#include <algorithm>
#include <atomic>

namespace Util {

namespace {

const ResourceModule* g_current = nullptr;
std::atomic<int> g_rccCounter{0};

} // namespace

ResourceModule::ResourceModule(QString root, QString name, const ResourceModule* fallback)
    : m_root(std::move(root)), m_name(std::move(name)), m_fallback(fallback)
{
    while (m_root.endsWith(QLatin1Char('/')))
        m_root.chop(1);
}

ResourceModule::~ResourceModule()
{
    if (g_current == this)
        g_current = nullptr;
    if (!m_rccData.isEmpty())
        QResource::unregisterResource(reinterpret_cast<const uchar*>(m_rccData.constData()),
                                      m_mapRoot);
}

std::unique_ptr<ResourceModule>
ResourceModule::LoadRcc(const QString& rccPath, const ResourceModule* fallback, QString* error)
{
    auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return std::unique_ptr<ResourceModule>();
    };
    if (!QFileInfo(rccPath).isFile())
        return fail(QStringLiteral("Resource file not found: %1").arg(rccPath));
    QFile file(rccPath);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("Resource file cannot be read: %1").arg(rccPath));
    if (file.size() > kMaxRccBytes)
        return fail(QStringLiteral("Resource file too large: %1").arg(rccPath));
    // The size asked, not the limit: reading allocates all it may be asked for.
    QByteArray data = file.read(file.size());
    // The resource system reads wherever a file's offsets point; a damaged file must not get
    // that far.
    if (!IsReadableResourceFile(data, kMaxRccBytes))
        return fail(QStringLiteral("Not a resource file: %1").arg(rccPath));
    // Each module gets its own mount point so that two modules never shadow each other.
    const QString mapRoot = QStringLiteral("/kvxref-module-%1").arg(++g_rccCounter);
    auto module = std::make_unique<ResourceModule>(QLatin1Char(':') + mapRoot,
                                                   QFileInfo(rccPath).completeBaseName(), fallback);
    // Registered from the module's own copy, which stays put for as long as the module lives.
    module->m_rccData = std::move(data);
    module->m_mapRoot = mapRoot;
    if (!QResource::registerResource(reinterpret_cast<const uchar*>(module->m_rccData.constData()),
                                     mapRoot)) {
        module->m_rccData.clear();
        return fail(QStringLiteral("Not a resource file: %1").arg(rccPath));
    }
    if (!QFileInfo::exists(module->m_root + QStringLiteral("/strings.json")))
        return fail(QStringLiteral("The resource file holds no string table: %1").arg(rccPath));
    return module;
}

void ResourceModule::loadStrings() const
{
    if (m_loaded)
        return;
    m_loaded = true;
    QFile file(m_root + QStringLiteral("/strings.json"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonObject table = QJsonDocument::fromJson(file.readAll()).object();
    m_strings.reserve(table.size());
    for (auto it = table.begin(); it != table.end(); ++it) {
        bool ok = false;
        const uint id = it.key().toUInt(&ok);
        if (ok && it.value().isString())
            m_strings.insert(id, it.value().toString());
    }
}

QString ResourceModule::String(unsigned id) const
{
    loadStrings();
    const auto it = m_strings.constFind(id);
    if (it != m_strings.constEnd())
        return *it;
    return m_fallback ? m_fallback->String(id) : QString();
}

bool ResourceModule::HasString(unsigned id) const
{
    loadStrings();
    return m_strings.contains(id) || (m_fallback && m_fallback->HasString(id));
}

QList<unsigned> ResourceModule::StringIds() const
{
    loadStrings();
    QList<unsigned> ids = m_strings.keys();
    std::sort(ids.begin(), ids.end());
    return ids;
}

QString ResourceModule::FindFile(const QString& relative) const
{
    if (relative.isEmpty())
        return {};
    const QString path = m_root + QLatin1Char('/') + relative;
    if (QFileInfo(path).isFile())
        return path;
    return m_fallback ? m_fallback->FindFile(relative) : QString();
}

QByteArray ResourceModule::Data(const QString& relative) const
{
    const QString path = FindFile(relative);
    if (path.isEmpty())
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

const ResourceModule* CurrentResourceModule()
{
    return g_current;
}

void SetCurrentResourceModule(const ResourceModule* module)
{
    g_current = module;
}

std::wstring LoadStrW(const ResourceModule* module, unsigned id)
{
    if (!module)
        module = g_current;
    return module ? module->String(id).toStdWString() : std::wstring();
}

} // namespace Util
