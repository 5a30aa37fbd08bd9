#pragma once

// Where a reference's file is and what the file system says about it.

#include <QDateTime>
#include <QString>
#include <QStringList>

/// How a reference's file was found.
enum class FoundBy {
    NotFound,
    /// At the saved path itself.
    SavedPath,
    /// In the folder of the drawing holding the reference or of the open drawing.
    DrawingFolder,
    /// In one of the project's search folders.
    SearchPath,
};

/// Size, date and version of a file, as read when the reference was loaded. Two snapshots of
/// the same file differ when it was written, replaced or removed in between.
struct FileFacts
{
    bool exists = false;
    qint64 size = 0;
    QDateTime modified;
    /// The drawing's file version (1032 for a "KV1032" drawing); 0 for other files.
    int fileVersion = 0;

    bool SameFileState(const FileFacts& other) const
    {
        return exists == other.exists && size == other.size && modified == other.modified;
    }
};

/// What the file system says about @p path now. The version is read only for @p drawing files,
/// from their first bytes.
FileFacts ReadFileFacts(const QString& path, bool drawing);

/// The outcome of looking for a reference's file.
struct Resolution
{
    FoundBy foundBy = FoundBy::NotFound;
    /// The file found, absolute and with links resolved; empty when none was.
    QString foundAt;
    /// Where the saved path itself points, absolute: the reference's identity when nothing was
    /// found.
    QString savedLocation;
};

/// Finds a reference's file the way users expect a project folder moved to another machine
/// to keep working:
/// 1. the saved path (a relative one from the folder of the drawing holding the reference);
/// 2. in the drawings' folders: the file name in the holding drawing's folder, the relative
///    saved path from the open drawing's folder, the file name in the open drawing's folder;
/// 3. the file name in each search folder, in order (relative ones from the open drawing's
///    folder).
/// Saved paths may use "\\" or "/"; only regular files are found.
class FileLocator
{
public:
    FileLocator() = default;
    FileLocator(QString hostFolder, QStringList searchFolders)
        : m_hostFolder(std::move(hostFolder)), m_searchFolders(std::move(searchFolders))
    {}

    const QString& HostFolder() const { return m_hostFolder; }
    const QStringList& SearchFolders() const { return m_searchFolders; }

    Resolution Resolve(const QString& savedPath, const QString& holdingFolder) const;

    /// @p savedPath with "/" separators.
    static QString Normalised(const QString& savedPath);
    /// True for "/x", "C:/x", "C:\\x" and "\\\\server\\share\\x": paths no folder is put before.
    static bool IsAbsolute(const QString& savedPath);

private:
    QString m_hostFolder;
    QStringList m_searchFolders;
};
