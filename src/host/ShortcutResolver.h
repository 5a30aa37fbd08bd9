#pragma once

#include "kvhostservices_export.h"

#include <QString>

#include <optional>

/// Follows shortcut files to the files they stand for. Two kinds exist here: Windows shell link
/// files, which projects carry over from Windows desktops and which are read with liblnk, and
/// symbolic links, which the file system follows. A shortcut that cannot be followed has no
/// target; callers then keep the shortcut's own path.
class KVHOSTSERVICES_EXPORT CShortcutResolver
{
public:
    /// True when the extension of @p path marks a shortcut: ".lnk" or ".pif", in any case.
    static bool IsShortcutPath(const QString& path);

    /// The target of the shortcut file @p path. A symbolic link is followed to the end of its
    /// chain; when that end (or @p path itself) is a shell link file, the path stored in it is
    /// the target. No target for a broken symbolic link, a file that is no shell link, or a
    /// shell link that stores no usable path.
    static std::optional<QString> Resolve(const QString& path);

    /// The path stored in the shell link file @p path: the local path of its link information,
    /// else its network path, else its relative path taken from the folder of the link file.
    /// The stored path is returned as written (a Windows path stays a Windows path). No value
    /// when the file is not a regular file of plausible size or not a readable shell link.
    static std::optional<QString> ReadShellLink(const QString& path);

    /// Shell link files are a few kilobytes at most; anything larger is not read, so that a
    /// hostile file cannot make the reader allocate or parse without bound.
    static constexpr qint64 kMaxShellLinkSize = 1 << 20;
};
