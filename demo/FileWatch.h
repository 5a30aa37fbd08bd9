#pragma once

#include "FileStatus.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

/// Tells when files that were loaded change on disk: written, replaced by another file (the
/// way careful programs save) or removed. Each file is compared with the snapshot taken when it
/// was loaded, so a touch that changes nothing and the program's own saves are not reported.
class FileWatch : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Watches @p path (absolute), remembering @p facts as its loaded state.
    void Watch(const QString& path, const FileFacts& facts);
    /// Takes the file's state now as its loaded state: after the program wrote it itself, or
    /// after a reload.
    void Acknowledge(const QString& path);
    void Clear();

    bool IsWatching(const QString& path) const { return m_files.contains(path); }

signals:
    /// @p path differs from its loaded state; reported once until it is acknowledged again.
    void FileChanged(const QString& path, bool removed);

private:
    void check(const QString& path);
    void folderChanged(const QString& folder);

    struct Entry
    {
        FileFacts loaded;
        bool reported = false;
    };

    QFileSystemWatcher m_watcher;
    QHash<QString, Entry> m_files;
    QSet<QString> m_folders;
};
