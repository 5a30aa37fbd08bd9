#include "FileWatch.h"

#include <QFileInfo>

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileWatch::check);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatch::folderChanged);
}

void FileWatch::Watch(const QString& path, const FileFacts& facts)
{
    m_files.insert(path, Entry{facts, false});
    // The folder too: a file replaced by renaming another over it is a new file, and the watch
    // on the old one ends with it.
    const QString folder = QFileInfo(path).absolutePath();
    if (!m_folders.contains(folder)) {
        m_folders.insert(folder);
        m_watcher.addPath(folder);
    }
    if (facts.exists)
        m_watcher.addPath(path);
}

void FileWatch::Acknowledge(const QString& path)
{
    const auto found = m_files.find(path);
    if (found == m_files.end())
        return;
    found->loaded = ReadFileFacts(path, false);
    found->reported = false;
    if (found->loaded.exists && !m_watcher.files().contains(path))
        m_watcher.addPath(path);
}

void FileWatch::Clear()
{
    m_files.clear();
    m_folders.clear();
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
}

void FileWatch::check(const QString& path)
{
    const auto found = m_files.find(path);
    if (found == m_files.end())
        return;
    const FileFacts now = ReadFileFacts(path, false);
    // A replaced file drops out of the watch; the new one is watched from here on.
    if (now.exists && !m_watcher.files().contains(path))
        m_watcher.addPath(path);
    if (found->reported || now.SameFileState(found->loaded))
        return;
    found->reported = true;
    emit FileChanged(path, !now.exists);
}

void FileWatch::folderChanged(const QString& folder)
{
    // Collected first: a handler of FileChanged may change the watch list.
    QStringList inFolder;
    for (auto it = m_files.cbegin(); it != m_files.cend(); ++it)
        if (QFileInfo(it.key()).absolutePath() == folder)
            inFolder << it.key();
    for (const QString& path : inFolder)
        check(path);
}
