#include "FileStatus.h"

#include "DrawingFormat.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// Only regular files: a folder or a named pipe by the reference's name is not its file.
bool isRegularFile(const QString& path)
{
    return !path.isEmpty() && QFileInfo(path).isFile();
}

QString joined(const QString& folder, const QString& relative)
{
    if (folder.isEmpty())
        return QDir::cleanPath(QDir(QDir::currentPath()).absoluteFilePath(relative));
    return QDir::cleanPath(QDir(folder).absoluteFilePath(relative));
}

} // namespace

FileFacts ReadFileFacts(const QString& path, bool drawing)
{
    FileFacts facts;
    const QFileInfo info(path);
    if (!info.isFile())
        return facts;
    facts.exists = true;
    facts.size = info.size();
    facts.modified = info.lastModified();
    if (drawing) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            facts.fileVersion = DrawingFormat::FileVersion(file.read(6));
    }
    return facts;
}

QString FileLocator::Normalised(const QString& savedPath)
{
    QString path = savedPath;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return path;
}

bool FileLocator::IsAbsolute(const QString& savedPath)
{
    const QString path = Normalised(savedPath);
    if (path.startsWith(QLatin1Char('/')))
        return true;
    // A drive letter: a drawing saved on another system still names a fixed place, and putting
    // a folder before it would name a file nobody meant.
    return path.size() >= 2 && path[1] == QLatin1Char(':') && path[0].isLetter();
}

Resolution FileLocator::Resolve(const QString& savedPath, const QString& holdingFolder) const
{
    Resolution result;
    const QString path = Normalised(savedPath).trimmed();
    if (path.isEmpty())
        return result;
    const bool absolute = IsAbsolute(path);
    result.savedLocation = absolute ? QDir::cleanPath(path) : joined(holdingFolder, path);
    const QString fileName = path.section(QLatin1Char('/'), -1);

    QStringList candidates{result.savedLocation};
    const qsizetype drawingFolderStart = candidates.size();
    if (!fileName.isEmpty() && !holdingFolder.isEmpty())
        candidates << joined(holdingFolder, fileName);
    if (!m_hostFolder.isEmpty()) {
        if (!absolute)
            candidates << joined(m_hostFolder, path);
        if (!fileName.isEmpty())
            candidates << joined(m_hostFolder, fileName);
    }
    const qsizetype searchStart = candidates.size();
    if (!fileName.isEmpty()) {
        for (const QString& folder : m_searchFolders)
            candidates << joined(
                QDir::isAbsolutePath(folder) ? folder : joined(m_hostFolder, folder), fileName);
    }

    for (qsizetype i = 0; i < candidates.size(); ++i) {
        if (!isRegularFile(candidates[i]))
            continue;
        result.foundAt = QFileInfo(candidates[i]).canonicalFilePath();
        result.foundBy = i < drawingFolderStart ? FoundBy::SavedPath
                         : i < searchStart      ? FoundBy::DrawingFolder
                                                : FoundBy::SearchPath;
        return result;
    }
    return result;
}
