#pragma once

#include "kvxreftroveui_export.h"

#include <QString>
#include <QStringList>

/// How the file editor reads file names out of its text and turns them into full paths.
///
/// The text holds one or more names separated by ";". Double quotes are dropped, blanks around
/// a name are dropped, empty names are skipped, and a name with "*" or "?" in its last part
/// stands for every file of its folder that it matches (letter case aside, as on Windows).
///
/// What "absolute" means here: references come from drawings made on Windows as well as on
/// this system, so a name is absolute when it starts with "/" (a path of this system), when
/// its second character is ":" (a drive letter) or when it starts with a backslash (the root
/// of the current drive, or a network share). Windows paths are left in Windows form, only
/// tidied; every other name reads a backslash as a folder separator, as Windows users write
/// them, and is taken from the editor's folder when it is not absolute.
class KVXREFTROVEUI_EXPORT CInPlaceFilePaths
{
public:
    /// At most this many names come out of one text, however many a wild card matches.
    static constexpr int kMaxEntries = 100000;
    /// Wild cards stop matching after this many name comparisons in one text, so that a pasted
    /// text of thousands of patterns over a huge folder ends in well under a second.
    static constexpr qint64 kMaxWildCardComparisons = 20000000;

    /// The names of @p text: quotes removed, split at ";", blanks trimmed, empty names skipped.
    static QStringList SplitText(const QString& text);
    /// The names of @p text with wild cards replaced by the names they match in their folder,
    /// taken from @p folder (empty: the current folder). A matching name keeps the folder part
    /// as written; a wild card that matches nothing, or whose folder cannot be read, gives
    /// nothing.
    static QStringList ParseText(const QString& text, const QString& folder);
    /// Joins full paths into a text that ParseText reads back as the same list (paths that
    /// contain ";" or double quotes cannot be written this way).
    static QString JoinPaths(const QStringList& paths);

    static bool HasWildCards(const QString& name);
    /// Whether @p name matches @p pattern: "*" any run of characters, "?" any one character,
    /// letter case aside; a pattern ending in ".*" also matches a name without an extension
    /// ("*.*" matches every name).
    static bool MatchesWildCard(const QString& name, const QString& pattern);

    static bool IsAbsolute(const QString& path);
    /// Whether @p path is written the Windows way: a drive letter or a leading backslash.
    static bool IsWindowsPath(const QString& path);
    /// The full path of @p entry: an absolute entry tidied ("." and ".." resolved, doubled
    /// separators removed), a relative one taken from @p folder (empty: the current folder),
    /// an empty one the folder itself.
    static QString FullPath(const QString& entry, const QString& folder);
};
