#include "XrefDocument.h"

#include "ReferenceLoader.h"

#include <QFileInfo>
#include <QSet>

namespace {

bool hasControlCharacter(const QString& text)
{
    for (const QChar c : text)
        if (c.category() == QChar::Other_Control)
            return true;
    return false;
}

// Names travel into block names and file names elsewhere; these characters break either.
const QString kForbiddenNameCharacters = QStringLiteral("<>/\\\":;?*|=`");
constexpr int kMaxNameLength = 255;

} // namespace

XrefDocument::XrefDocument(QObject* parent) : QObject(parent)
{
    connect(&m_watch, &FileWatch::FileChanged, this, &XrefDocument::fileChanged);
}

bool XrefDocument::Open(const QString& path, QString* error)
{
    const QFileInfo info(path);
    DrawingReadResult read = ReadDrawing(info.absoluteFilePath(), DrawingReadScope::Everything);
    if (!read.Ok()) {
        if (error)
            *error = read.message;
        return false;
    }
    m_path = info.absoluteFilePath();
    m_contents = std::move(read.contents);
    m_locator = FileLocator(info.absolutePath(), m_locator.SearchFolders());
    m_modified = false;
    rebuild();
    return true;
}

void XrefDocument::SetSearchFolders(const QStringList& folders)
{
    m_locator = FileLocator(m_locator.HostFolder(), folders);
    if (IsOpen())
        rebuild();
}

void XrefDocument::Refresh()
{
    if (IsOpen())
        rebuild();
}

void XrefDocument::rebuild()
{
    m_watch.Clear();
    LoadedReferences loaded = LoadReferences(m_path, m_contents, m_locator, kMaxOccurrences);
    m_occurrences = std::move(loaded.occurrences);
    m_warning = std::move(loaded.warning);
    QSet<QString> watched;
    for (const Occurrence& occurrence : m_occurrences) {
        const QString& path = occurrence.resolution.foundAt;
        if (!path.isEmpty() && occurrence.facts.exists && !watched.contains(path)) {
            watched.insert(path);
            m_watch.Watch(path, occurrence.facts);
        }
    }
    emit Rebuilt();
}

void XrefDocument::fileChanged(const QString& path, bool removed)
{
    QList<int> changed;
    for (std::size_t i = 0; i < m_occurrences.size(); ++i) {
        Occurrence& occurrence = m_occurrences[i];
        if (occurrence.resolution.foundAt != path)
            continue;
        // An unloaded reference shows nothing of the file, so nothing of it is out of date.
        if (occurrence.state == ReferenceState::Unloaded ||
            occurrence.state == ReferenceState::NotLoaded)
            continue;
        occurrence.state = ReferenceState::NeedsReloading;
        changed << int(i);
    }
    if (changed.isEmpty())
        return;
    const QString name = QFileInfo(path).fileName();
    emit StatesChanged(changed,
                       removed ? QStringLiteral("\"%1\" was removed or renamed on disk: reload to "
                                                "look for it again.")
                                     .arg(name)
                               : QStringLiteral("\"%1\" has changed on disk: reload it to see the "
                                                "changes.")
                                     .arg(name));
}

QString XrefDocument::CheckName(const QString& name, int exceptRecord) const
{
    if (name.isEmpty())
        return QStringLiteral("A reference needs a name.");
    if (name.trimmed() != name)
        return QStringLiteral("A name cannot begin or end with a space.");
    if (name.size() > kMaxNameLength)
        return QStringLiteral("A name can have at most %1 characters.").arg(kMaxNameLength);
    for (const QChar c : name)
        if (kForbiddenNameCharacters.contains(c) || c.category() == QChar::Other_Control)
            return QStringLiteral("A name cannot contain any of %1 or control characters.")
                .arg(kForbiddenNameCharacters);
    for (std::size_t i = 0; i < m_contents.references.size(); ++i) {
        if (int(i) != exceptRecord &&
            m_contents.references[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return QStringLiteral("The drawing already has a reference named \"%1\".")
                .arg(m_contents.references[i].name);
    }
    return {};
}

QString XrefDocument::checkOwnReference(int occurrence) const
{
    if (occurrence < 0 || std::size_t(occurrence) >= m_occurrences.size())
        return QStringLiteral("There is no such reference.");
    const Occurrence& o = m_occurrences[std::size_t(occurrence)];
    if (o.parent < 0)
        return QStringLiteral("The open drawing is not one of its own references.");
    if (o.parent != 0)
        return QStringLiteral("\"%1\" belongs to \"%2\": open that drawing to change it.")
            .arg(o.reference.name, m_occurrences[std::size_t(o.parent)].reference.name);
    return {};
}

QString XrefDocument::changeRecord(int occurrence, const ReferenceRecord& changed, bool relist)
{
    Occurrence& o = m_occurrences[std::size_t(occurrence)];
    m_contents.references[std::size_t(o.record)] = changed;
    m_modified = true;
    if (relist)
        rebuild();
    else
        o.reference = changed;
    return {};
}

QString XrefDocument::Rename(int occurrence, const QString& name)
{
    if (QString fault = checkOwnReference(occurrence); !fault.isEmpty())
        return fault;
    const Occurrence& o = m_occurrences[std::size_t(occurrence)];
    if (o.reference.name == name)
        return {};
    if (QString fault = CheckName(name, o.record); !fault.isEmpty())
        return fault;
    ReferenceRecord changed = o.reference;
    changed.name = name;
    return changeRecord(occurrence, changed, false);
}

QString XrefDocument::checkSavedPath(int occurrence, const QString& savedPath) const
{
    if (QString fault = checkOwnReference(occurrence); !fault.isEmpty())
        return fault;
    if (savedPath.trimmed().isEmpty())
        return QStringLiteral("A reference needs a saved path.");
    if (hasControlCharacter(savedPath))
        return QStringLiteral("A saved path cannot contain control characters.");
    if (savedPath.toUtf8().size() > DrawingFormat::kMaxPathBytes)
        return QStringLiteral("A saved path can have at most %1 bytes.")
            .arg(DrawingFormat::kMaxPathBytes);
    return {};
}

QString XrefDocument::SetSavedPath(int occurrence, const QString& savedPath)
{
    if (QString fault = checkSavedPath(occurrence, savedPath); !fault.isEmpty())
        return fault;
    ReferenceRecord changed = m_occurrences[std::size_t(occurrence)].reference;
    changed.savedPath = savedPath;
    return changeRecord(occurrence, changed, true);
}

QString XrefDocument::SetSavedPaths(const std::vector<std::pair<int, QString>>& changes)
{
    for (const auto& [occurrence, savedPath] : changes)
        if (QString fault = checkSavedPath(occurrence, savedPath); !fault.isEmpty())
            return fault;
    if (changes.empty())
        return {};
    // All records first, then one listing: each listing looks for every file again.
    for (const auto& [occurrence, savedPath] : changes)
        m_contents.references[std::size_t(m_occurrences[std::size_t(occurrence)].record)]
            .savedPath = savedPath;
    m_modified = true;
    rebuild();
    return {};
}

QString XrefDocument::SetOverlay(int occurrence, bool overlay)
{
    if (QString fault = checkOwnReference(occurrence); !fault.isEmpty())
        return fault;
    ReferenceRecord changed = m_occurrences[std::size_t(occurrence)].reference;
    if (overlay && changed.kind != ReferenceKind::Drawing)
        return QStringLiteral("Only drawings can be overlays.");
    changed.overlay = overlay;
    // The open drawing's own overlays show like attachments: only deeper ones are left out.
    return changeRecord(occurrence, changed, false);
}

QString XrefDocument::SetUnloaded(int occurrence, bool unloaded)
{
    if (QString fault = checkOwnReference(occurrence); !fault.isEmpty())
        return fault;
    ReferenceRecord changed = m_occurrences[std::size_t(occurrence)].reference;
    changed.unloaded = unloaded;
    return changeRecord(occurrence, changed, true);
}

QString XrefDocument::Detach(int occurrence)
{
    if (QString fault = checkOwnReference(occurrence); !fault.isEmpty())
        return fault;
    const int record = m_occurrences[std::size_t(occurrence)].record;
    m_contents.references.erase(m_contents.references.begin() + record);
    m_modified = true;
    rebuild();
    return {};
}

QString XrefDocument::Attach(const ReferenceRecord& reference)
{
    if (!IsOpen())
        return QStringLiteral("No drawing is open.");
    if (m_contents.references.size() >= std::size_t(DrawingFormat::kMaxReferences))
        return QStringLiteral("A drawing holds at most %1 references.")
            .arg(DrawingFormat::kMaxReferences);
    if (QString fault = CheckName(reference.name); !fault.isEmpty())
        return fault;
    if (!IsKnownKind(std::uint8_t(reference.kind)))
        return QStringLiteral("This kind of reference is not known.");
    if (reference.overlay && reference.kind != ReferenceKind::Drawing)
        return QStringLiteral("Only drawings can be overlays.");
    if (reference.savedPath.trimmed().isEmpty() || hasControlCharacter(reference.savedPath) ||
        reference.savedPath.toUtf8().size() > DrawingFormat::kMaxPathBytes)
        return QStringLiteral("\"%1\" is not a path a reference can be saved with.")
            .arg(reference.savedPath);
    m_contents.references.push_back(reference);
    m_modified = true;
    rebuild();
    return {};
}

QString XrefDocument::Save()
{
    if (!IsOpen())
        return QStringLiteral("No drawing is open.");
    const QString fault = SaveDrawing(m_path, m_contents);
    if (!fault.isEmpty())
        return fault;
    m_modified = false;
    // The program's own save is no change on disk to tell the user about.
    m_watch.Acknowledge(m_occurrences.front().resolution.foundAt);
    return {};
}
