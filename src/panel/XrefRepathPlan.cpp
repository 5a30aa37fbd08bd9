#include "panel/XrefRepathPlan.h"

#include "items/XrefPanelCtrlItem.h"

#include <QDir>

#include <algorithm>
#include <unordered_set>

class CXrefRepathPlanPrivate
{
public:
    std::vector<CXrefRepathPlan::Source> sources;
    std::vector<CXrefRepathPlan::Entry> entries;
    QString baseFolder;

    void add(const CXrefRepathPlan::Source& source, QString newPath)
    {
        if (newPath == source.savedPath)
            return;
        entries.push_back({source.item, source.name, source.savedPath, std::move(newPath),
                           CXrefRepathPlan::Exists::Unknown});
    }
};

CXrefRepathPlan::CXrefRepathPlan(const std::vector<CXrefPanelCtrlItem*>& items)
    : d(std::make_unique<CXrefRepathPlanPrivate>())
{
    std::unordered_set<const CXrefPanelCtrlItem*> seen;
    d->sources.reserve(items.size());
    for (CXrefPanelCtrlItem* item : items) {
        if (!item || !seen.insert(item).second)
            continue;
        d->sources.push_back({item, QString::fromStdWString(item->GetText()),
                              QString::fromStdWString(item->GetSavedPath())});
    }
}

CXrefRepathPlan::CXrefRepathPlan(std::vector<Source> sources)
    : d(std::make_unique<CXrefRepathPlanPrivate>())
{
    d->sources = std::move(sources);
}

CXrefRepathPlan::~CXrefRepathPlan() = default;

const std::vector<CXrefRepathPlan::Source>& CXrefRepathPlan::Sources() const
{
    return d->sources;
}

void CXrefRepathPlan::SetBaseFolder(const QString& folder)
{
    d->baseFolder = folder;
}

QString CXrefRepathPlan::BaseFolder() const
{
    return d->baseFolder;
}

void CXrefRepathPlan::FindAndReplace(const QString& find, const QString& replace,
                                     Qt::CaseSensitivity sensitivity)
{
    d->entries.clear();
    if (find.isEmpty())
        return;
    for (const Source& source : d->sources) {
        if (!source.savedPath.contains(find, sensitivity))
            continue;
        QString path = source.savedPath;
        d->add(source, path.replace(find, replace, sensitivity));
    }
}

void CXrefRepathPlan::SelectNewFolder(const QString& folder)
{
    d->entries.clear();
    if (folder.isEmpty())
        return;
    const bool backslashes = folder.contains(QLatin1Char('\\')) && !folder.contains('/');
    const QChar separator = backslashes ? QLatin1Char('\\') : QLatin1Char('/');
    const bool ends = folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\'));
    for (const Source& source : d->sources) {
        const QString name = FileNameOf(source.savedPath);
        if (name.isEmpty())
            continue;
        d->add(source, ends ? folder + name : folder + separator + name);
    }
}

const std::vector<CXrefRepathPlan::Entry>& CXrefRepathPlan::Entries() const
{
    return d->entries;
}

int CXrefRepathPlan::UnknownCount() const
{
    return int(std::count_if(d->entries.begin(), d->entries.end(),
                             [](const Entry& entry) { return entry.exists == Exists::Unknown; }));
}

int CXrefRepathPlan::MissingCount() const
{
    return int(std::count_if(d->entries.begin(), d->entries.end(),
                             [](const Entry& entry) { return entry.exists == Exists::No; }));
}

QString CXrefRepathPlan::ResolvedPath(const QString& path) const
{
    if (path.isEmpty())
        return {};
    // Saved paths keep the separators of the machine that wrote them.
    const QString slashed = QString(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!QDir::isRelativePath(slashed))
        return QDir::cleanPath(slashed);
    return QDir::cleanPath(QDir(d->baseFolder.isEmpty() ? QDir::currentPath() : d->baseFolder)
                               .absoluteFilePath(slashed));
}

void CXrefRepathPlan::SetExists(std::size_t index, bool exists)
{
    if (index < d->entries.size())
        d->entries[index].exists = exists ? Exists::Yes : Exists::No;
}

QString CXrefRepathPlan::FileNameOf(const QString& path)
{
    const int cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf('\\'));
    return path.mid(cut + 1);
}
