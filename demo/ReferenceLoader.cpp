#include "ReferenceLoader.h"

#include "XrefDocument.h"

#include <QFileInfo>
#include <QHash>
#include <QStringList>

namespace {

/// A reference waiting to be listed.
struct Pending
{
    int parent;
    int record;
    ReferenceRecord reference;
};

ReferenceState stateFor(DrawingReadStatus status)
{
    switch (status) {
    case DrawingReadStatus::CannotOpen:
        return ReferenceState::AccessDenied;
    case DrawingReadStatus::NewerFormat:
        return ReferenceState::NewerVersion;
    default:
        return ReferenceState::Damaged;
    }
}

// Which list row an occurrence shows in: one per file, and per kind, since one file attached
// as a drawing and as an underlay are two different references.
QString rowKey(const Occurrence& occurrence)
{
    const QString& where = occurrence.resolution.foundAt.isEmpty()
                               ? occurrence.resolution.savedLocation
                               : occurrence.resolution.foundAt;
    return QString::number(int(occurrence.reference.kind)) + QLatin1Char(':') + where;
}

class Loader
{
public:
    Loader(const FileLocator& locator, int maxOccurrences)
        : m_locator(locator), m_max(maxOccurrences)
    {}

    LoadedReferences Run(const QString& hostPath, const DrawingContents& host)
    {
        Occurrence root;
        root.reference.name = QFileInfo(hostPath).completeBaseName();
        root.reference.savedPath = hostPath;
        root.state = ReferenceState::Opened;
        root.resolution.foundBy = FoundBy::SavedPath;
        root.resolution.foundAt = QFileInfo(hostPath).canonicalFilePath();
        if (root.resolution.foundAt.isEmpty())
            root.resolution.foundAt = QFileInfo(hostPath).absoluteFilePath();
        root.resolution.savedLocation = root.resolution.foundAt;
        root.facts = ReadFileFacts(hostPath, true);
        m_result.occurrences.push_back(root);
        m_rowOwner.insert(rowKey(root), 0);
        m_chain.push_back(0);
        m_onChain.insert(root.resolution.foundAt, 1);
        queueChildren(0, host.references);

        while (!m_pending.empty()) {
            Pending next = std::move(m_pending.back());
            m_pending.pop_back();
            climbTo(next.parent);
            list(next);
        }
        return std::move(m_result);
    }

private:
    // The chain holds the open drawing and the drawings above the next reference; a reference
    // to one of them closes a cycle.
    void climbTo(int parent)
    {
        while (m_chain.back() != parent) {
            const QString& left =
                m_result.occurrences[std::size_t(m_chain.back())].resolution.foundAt;
            if (--m_onChain[left] == 0)
                m_onChain.remove(left);
            m_chain.pop_back();
        }
    }

    void queueChildren(int parent, const std::vector<ReferenceRecord>& references)
    {
        // Reversed, so that the stack hands them out in table order. An overlay shows only in
        // the drawing that holds it: drawings that reference that one do not see it.
        for (std::size_t i = references.size(); i-- > 0;)
            if (parent == 0 || !references[i].overlay)
                m_pending.push_back(Pending{parent, int(i), references[i]});
    }

    void list(Pending& next)
    {
        const Occurrence& parent = m_result.occurrences[std::size_t(next.parent)];
        Occurrence occurrence;
        occurrence.parent = next.parent;
        occurrence.record = next.record;
        occurrence.depth = parent.depth + 1;
        occurrence.reference = std::move(next.reference);
        occurrence.resolution = m_locator.Resolve(
            occurrence.reference.savedPath, QFileInfo(parent.resolution.foundAt).absolutePath());
        const int index = int(m_result.occurrences.size());
        const auto owner = m_rowOwner.constFind(rowKey(occurrence));
        if (owner == m_rowOwner.cend())
            m_rowOwner.insert(rowKey(occurrence), index);
        else
            occurrence.sharedWith = *owner;

        // A copy: the occurrence is moved into the list before the chain needs its path.
        const QString foundAt = occurrence.resolution.foundAt;
        const bool drawing = occurrence.reference.kind == ReferenceKind::Drawing;
        const DrawingContents* nested = nullptr;
        if (!foundAt.isEmpty())
            occurrence.facts = facts(foundAt, drawing);
        // Unloading is the user's choice and stands whether the file is there or not.
        if (occurrence.reference.unloaded)
            occurrence.state = ReferenceState::Unloaded;
        else if (foundAt.isEmpty())
            occurrence.state = ReferenceState::NotFound;
        else if (!drawing)
            occurrence.state = ReferenceState::Loaded;
        else if (m_onChain.contains(foundAt))
            markCircular(occurrence);
        else
            nested = readNested(occurrence);
        if (nested && !nested->references.empty()) {
            const std::size_t waiting = m_result.occurrences.size() + 1 + m_pending.size();
            if (waiting + nested->references.size() > std::size_t(m_max)) {
                occurrence.state = ReferenceState::NotLoaded;
                occurrence.message = QStringLiteral("\"%1\" is not loaded: the drawings nest more "
                                                    "than %2 references.")
                                         .arg(occurrence.reference.name)
                                         .arg(m_max);
                m_result.warning = QStringLiteral("Some nested drawings are not loaded: the "
                                                  "drawings nest more than %1 references.")
                                       .arg(m_max);
                nested = nullptr;
            }
        }
        m_result.occurrences.push_back(std::move(occurrence));
        if (nested && !nested->references.empty()) {
            m_chain.push_back(index);
            ++m_onChain[foundAt];
            queueChildren(index, nested->references);
        }
    }

    void markCircular(Occurrence& occurrence)
    {
        QStringList names;
        for (int at : m_chain)
            names << m_result.occurrences[std::size_t(at)].reference.name;
        names << occurrence.reference.name;
        // Long chains keep their ends, where the cycle starts and closes.
        if (names.size() > 8)
            names =
                names.mid(0, 2) + QStringList{QStringLiteral("...")} + names.mid(names.size() - 5);
        occurrence.state = ReferenceState::Circular;
        occurrence.message =
            QStringLiteral("\"%1\" is not loaded: it is a circular reference (%2).")
                .arg(occurrence.reference.name, names.join(QStringLiteral(" > ")));
    }

    /// The table of the drawing @p occurrence found, read once per load; null when it cannot
    /// be read, with the state and message set.
    const DrawingContents* readNested(Occurrence& occurrence)
    {
        const QString& path = occurrence.resolution.foundAt;
        auto read = m_reads.find(path);
        if (read == m_reads.end())
            read = m_reads.insert(path, ReadDrawing(path));
        if (!read->Ok()) {
            occurrence.state = stateFor(read->status);
            occurrence.message = read->message;
            return nullptr;
        }
        occurrence.state = ReferenceState::Loaded;
        return &read->contents;
    }

    FileFacts facts(const QString& path, bool drawing)
    {
        // Keyed with the kind too: only drawings have a version.
        const QString key = drawing ? QStringLiteral("drawing:") + path : path;
        auto found = m_facts.constFind(key);
        if (found == m_facts.cend())
            found = m_facts.insert(key, ReadFileFacts(path, drawing));
        return *found;
    }

    const FileLocator& m_locator;
    const int m_max;
    LoadedReferences m_result;
    std::vector<Pending> m_pending;
    std::vector<int> m_chain;
    QHash<QString, int> m_onChain;
    QHash<QString, int> m_rowOwner;
    QHash<QString, DrawingReadResult> m_reads;
    QHash<QString, FileFacts> m_facts;
};

} // namespace

LoadedReferences LoadReferences(const QString& hostPath, const DrawingContents& host,
                                const FileLocator& locator, int maxOccurrences)
{
    return Loader(locator, maxOccurrences).Run(hostPath, host);
}
