#pragma once

#include "DrawingFormat.h"
#include "FileStatus.h"
#include "FileWatch.h"
#include "ReferenceState.h"

#include <QList>
#include <QObject>
#include <QString>

#include <utility>
#include <vector>

/// One place where a file is referenced: a node of the panel's tree. A file referenced from
/// two places has two occurrences; the later one names the first in sharedWith, and the panel
/// shows both in one list row.
struct Occurrence
{
    /// The occurrence of the drawing that holds this reference; -1 for the open drawing.
    int parent = -1;
    /// Row of the parent drawing's reference table; -1 for the open drawing.
    int record = -1;
    /// 0 for the open drawing, 1 for its own references, 2 for theirs...
    int depth = 0;
    /// The first occurrence of the same file, which owns the list row; -1 when this is it.
    int sharedWith = -1;
    /// The table row. For the open drawing: its file name without suffix and its path.
    ReferenceRecord reference;
    ReferenceState state = ReferenceState::NotFound;
    Resolution resolution;
    /// The found file as it was when loaded; empty when nothing was found.
    FileFacts facts;
    /// Why the reference is not loaded (a cycle, a damaged drawing...); empty when it is.
    QString message;
};

/// The open drawing and every reference in it, nested drawings followed to the end: the
/// host's side of the panel. Files are looked for with a FileLocator and watched after loading,
/// so that a file changed on disk becomes NeedsReloading at once.
///
/// Occurrences are listed parent first, children in table order (the order the panel inserts
/// them). Any change to the structure (opening, refreshing, an edit of the table) rebuilds the
/// list: indices do not survive Rebuilt.
class XrefDocument : public QObject
{
    Q_OBJECT

public:
    /// More occurrences than this are not followed: drawings that reference one another in a
    /// lattice multiply their occurrences with every level.
    static constexpr int kMaxOccurrences = 10000;

    explicit XrefDocument(QObject* parent = nullptr);

    /// Opens the drawing at @p path. False with the reason in @p error when it cannot be read;
    /// the document then keeps what it had.
    bool Open(const QString& path, QString* error = nullptr);
    /// Folders searched for files that are neither at their saved path nor beside the drawings.
    void SetSearchFolders(const QStringList& folders);
    /// Looks for every file again and reads the nested drawings afresh.
    void Refresh();

    bool IsOpen() const { return !m_path.isEmpty(); }
    /// The open drawing's absolute path.
    const QString& Path() const { return m_path; }
    const DrawingContents& Contents() const { return m_contents; }
    const FileLocator& Locator() const { return m_locator; }
    const std::vector<Occurrence>& Occurrences() const { return m_occurrences; }
    /// Why some references were not followed; empty when all were.
    const QString& Warning() const { return m_warning; }

    // --- Changes to the open drawing's own references -----------------------------------------
    // Each returns an empty text when done, else why not (for the message strip), and changes
    // nothing then. Changes stay in memory until Save.

    QString Rename(int occurrence, const QString& name);
    QString SetSavedPath(int occurrence, const QString& savedPath);
    /// Gives each listed occurrence (an index) its new saved path in one step: all are checked
    /// first, and nothing changes when one of them cannot be; the document is listed once.
    QString SetSavedPaths(const std::vector<std::pair<int, QString>>& changes);
    QString SetOverlay(int occurrence, bool overlay);
    QString SetUnloaded(int occurrence, bool unloaded);
    QString Detach(int occurrence);
    QString Attach(const ReferenceRecord& reference);
    bool IsModified() const { return m_modified; }
    /// Writes the open drawing back; see SaveDrawing.
    QString Save();

    /// Why @p name cannot name a reference of the open drawing (the one at table row
    /// @p exceptRecord aside); empty when it can.
    QString CheckName(const QString& name, int exceptRecord = -1) const;

signals:
    /// The occurrences were listed afresh.
    void Rebuilt();
    /// Files changed on disk: @p occurrences now need reloading; @p message says which file.
    void StatesChanged(const QList<int>& occurrences, const QString& message);

private:
    void rebuild();
    void fileChanged(const QString& path, bool removed);
    /// Empty when @p occurrence is one of the open drawing's own references, else why not.
    QString checkOwnReference(int occurrence) const;
    /// Empty when @p occurrence is an own reference that can be saved with @p savedPath.
    QString checkSavedPath(int occurrence, const QString& savedPath) const;
    QString changeRecord(int occurrence, const ReferenceRecord& changed, bool relist);

    QString m_path;
    DrawingContents m_contents;
    FileLocator m_locator;
    std::vector<Occurrence> m_occurrences;
    QString m_warning;
    bool m_modified = false;
    FileWatch m_watch;
};
