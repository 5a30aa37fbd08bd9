#include "views/editors/InPlaceFilePaths.h"

#include <QDir>
#include <QDirIterator>
#include <QHash>

#include <algorithm>

namespace {

const QChar kSeparator = QLatin1Char(';');
const QChar kSlash = QLatin1Char('/');
const QChar kBackslash = QLatin1Char('\\');

// Like QDir::cleanPath, but ".." at the root stays at the root, as the file system has it.
QString tidyPath(const QString& path)
{
    QString clean = QDir::cleanPath(path);
    while (clean.startsWith(QLatin1String("/../")))
        clean.remove(0, 3);
    if (clean == QLatin1String("/.."))
        clean = QStringLiteral("/");
    return clean;
}

QString baseFolder(const QString& folder)
{
    if (folder.isEmpty())
        return QDir::currentPath();
    if (CInPlaceFilePaths::IsWindowsPath(folder))
        return folder;
    QString posix = folder;
    posix.replace(kBackslash, kSlash);
    return QDir(posix).absolutePath();
}

// "C:\a\.\b\..\c" -> "C:\a\c", "\\server\share\x\..\y" -> "\\server\share\y". The prefix (drive,
// share or root) is never climbed out of.
QString tidyWindowsPath(const QString& path)
{
    QString p = path;
    p.replace(kSlash, kBackslash);
    QString prefix;
    int pos = 0;
    bool rooted = false;
    if (p.startsWith(QLatin1String("\\\\"))) {
        const int server = p.indexOf(kBackslash, 2);
        const int share = server < 0 ? -1 : p.indexOf(kBackslash, server + 1);
        pos = share < 0 ? int(p.size()) : share;
        prefix = p.left(pos);
        rooted = true;
    } else if (p.size() >= 2 && p.at(1) == QLatin1Char(':') && p.at(0) != kBackslash) {
        prefix = p.left(2);
        pos = 2;
        rooted = p.size() > 2 && p.at(2) == kBackslash;
    } else {
        rooted = p.startsWith(kBackslash);
    }
    QStringList kept;
    const QStringList parts = p.mid(pos).split(kBackslash, Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        if (part == QLatin1String("."))
            continue;
        if (part == QLatin1String("..")) {
            if (!kept.isEmpty() && kept.last() != QLatin1String(".."))
                kept.removeLast();
            else if (!rooted)
                kept << part; // "C:..\x" climbs from the drive's current folder
            continue;
        }
        kept << part;
    }
    QString result = prefix;
    if (rooted && !(prefix.startsWith(QLatin1String("\\\\")) && kept.isEmpty()))
        result += kBackslash;
    return result + kept.join(kBackslash);
}

// Wild-card expansion for one text: folder listings and pattern results are shared between the
// text's names, and the work is bounded.
class WildCardExpander
{
public:
    explicit WildCardExpander(QString folder) : m_folder(std::move(folder)) {}

    void Expand(const QString& name, QStringList& out)
    {
        const int cut = int(std::max(name.lastIndexOf(kSlash), name.lastIndexOf(kBackslash)));
        const QString folderPart = name.left(cut + 1);
        const QString pattern = name.mid(cut + 1);
        // Like a Windows file search: wild cards only in the last part of a name.
        if (CInPlaceFilePaths::HasWildCards(folderPart) || pattern.isEmpty())
            return;
        const QString folder = CInPlaceFilePaths::FullPath(folderPart, m_folder);
        const QString key = folder + QChar(0) + pattern;
        auto found = m_matches.constFind(key);
        if (found == m_matches.constEnd())
            found = m_matches.insert(key, match(listing(folder), pattern));
        for (const QString& match : *found) {
            if (out.size() >= CInPlaceFilePaths::kMaxEntries)
                return;
            out << folderPart + match;
        }
    }

private:
    const QStringList& listing(const QString& folder)
    {
        auto found = m_listings.constFind(folder);
        if (found != m_listings.constEnd())
            return *found;
        QStringList names;
        if (!CInPlaceFilePaths::IsWindowsPath(folder)) {
            QDirIterator it(folder,
                            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
            while (it.hasNext() && names.size() < CInPlaceFilePaths::kMaxEntries) {
                it.next();
                names << it.fileName();
            }
        }
        // A stable order whatever the file system returns.
        std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
            const int order = a.compare(b, Qt::CaseInsensitive);
            return order != 0 ? order < 0 : a < b;
        });
        return *m_listings.insert(folder, names);
    }

    QStringList match(const QStringList& names, const QString& pattern)
    {
        QStringList matches;
        for (const QString& name : names) {
            if (++m_comparisons > CInPlaceFilePaths::kMaxWildCardComparisons)
                break;
            if (CInPlaceFilePaths::MatchesWildCard(name, pattern))
                matches << name;
        }
        return matches;
    }

    QString m_folder;
    QHash<QString, QStringList> m_listings;
    QHash<QString, QStringList> m_matches;
    qint64 m_comparisons = 0;
};

bool matchesFrom(const QString& name, const QString& pattern)
{
    // Greedy matching that remembers the last "*": linear for ordinary patterns and at worst
    // the product of both lengths, never exponential.
    int n = 0;
    int p = 0;
    int starPattern = -1;
    int starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern.at(p) == QLatin1Char('*')) {
            starPattern = p++;
            starName = n;
        } else if (p < pattern.size() &&
                   (pattern.at(p) == QLatin1Char('?') ||
                    pattern.at(p).toCaseFolded() == name.at(n).toCaseFolded())) {
            ++p;
            ++n;
        } else if (starPattern >= 0) {
            p = starPattern + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern.at(p) == QLatin1Char('*'))
        ++p;
    return p == pattern.size();
}

} // namespace

QStringList CInPlaceFilePaths::SplitText(const QString& text)
{
    QString unquoted = text;
    unquoted.remove(QLatin1Char('"'));
    QStringList names;
    for (const QString& piece : unquoted.split(kSeparator)) {
        const QString name = piece.trimmed();
        if (!name.isEmpty())
            names << name;
    }
    return names;
}

QStringList CInPlaceFilePaths::ParseText(const QString& text, const QString& folder)
{
    QStringList entries;
    WildCardExpander expander(baseFolder(folder));
    for (const QString& name : SplitText(text)) {
        if (entries.size() >= kMaxEntries)
            break;
        if (HasWildCards(name))
            expander.Expand(name, entries);
        else
            entries << name;
    }
    return entries;
}

QString CInPlaceFilePaths::JoinPaths(const QStringList& paths)
{
    return paths.join(QStringLiteral("; "));
}

bool CInPlaceFilePaths::HasWildCards(const QString& name)
{
    return name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
}

bool CInPlaceFilePaths::MatchesWildCard(const QString& name, const QString& pattern)
{
    if (matchesFrom(name, pattern))
        return true;
    return pattern.endsWith(QLatin1String(".*")) && !name.contains(QLatin1Char('.')) &&
           matchesFrom(name, pattern.chopped(2));
}

bool CInPlaceFilePaths::IsAbsolute(const QString& path)
{
    return path.startsWith(kSlash) || IsWindowsPath(path);
}

bool CInPlaceFilePaths::IsWindowsPath(const QString& path)
{
    // "/:a" is a path of this system whose first folder has a colon in its name, not a drive.
    return path.startsWith(kBackslash) ||
           (path.size() >= 2 && path.at(1) == QLatin1Char(':') && path.at(0) != kSlash);
}

QString CInPlaceFilePaths::FullPath(const QString& entry, const QString& folder)
{
    // No length limit: this system's paths may be far longer than Windows' classic 260
    // characters, and a shortened path would name another file.
    if (IsWindowsPath(entry))
        return tidyWindowsPath(entry);
    QString posix = entry;
    posix.replace(kBackslash, kSlash);
    if (posix.startsWith(kSlash))
        return tidyPath(posix);
    const QString base = baseFolder(folder);
    if (IsWindowsPath(base))
        return tidyWindowsPath(posix.isEmpty() ? base : base + kBackslash + posix);
    return tidyPath(posix.isEmpty() ? base : base + kSlash + posix);
}
