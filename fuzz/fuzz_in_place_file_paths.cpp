// What users type or paste into the path editor is read back as a list of files. No text may
// crash it, hang it or make it list without bound, and what it reads must hold together: names
// trimmed and free of separators, joined names reading back as the same list, full paths that a
// second pass leaves as they are.
//
// The first input byte picks the text encoding and the base folder; the rest is the text. Names
// with wild cards are expanded in a scratch folder of a few files only: a pattern that climbs
// out of it or names another folder would list the machine's real folders, which tells nothing
// about the parser and makes every run slow.

#include "views/editors/InPlaceFilePaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

QTemporaryDir* g_scratch = nullptr;

void check(bool condition)
{
    if (!condition)
        std::abort();
}

QString decode(const std::uint8_t* data, std::size_t size, bool wide)
{
    if (wide)
        return QString::fromUtf16(reinterpret_cast<const char16_t*>(data), qsizetype(size / 2));
    return QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
}

bool staysInTheScratchFolder(const QString& name)
{
    if (!CInPlaceFilePaths::HasWildCards(name))
        return true;
    return !CInPlaceFilePaths::IsAbsolute(name) && !name.contains(QLatin1String(".."));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    g_scratch = new QTemporaryDir();
    const QDir dir(g_scratch->path());
    dir.mkpath(QStringLiteral("sub/deeper"));
    for (const char* name : {"a.dwg", "B.DWG", "plan 1.dwg", "notes", ".hidden", "c.dwg.bak",
                             "sub/x.dwg", "sub/y.pdf", "sub/deeper/z.dwg"}) {
        QFile file(dir.filePath(QString::fromUtf8(name)));
        if (file.open(QIODevice::WriteOnly))
            file.write("x");
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1 || size > 4096)
        return 0;
    const unsigned mode = data[0];
    const QString text = decode(data + 1, size - 1, mode & 1u);
    // An empty folder means the current one; a Windows folder gives wild cards nothing to list.
    const QString folder = (mode & 6u) == 0   ? g_scratch->path()
                           : (mode & 6u) == 2 ? QStringLiteral("C:\\Drawings\\..\\Site")
                           : (mode & 6u) == 4 ? g_scratch->path() + QStringLiteral("\\sub")
                                              : QStringLiteral("\\\\server\\share");

    const QStringList names = CInPlaceFilePaths::SplitText(text);
    for (const QString& name : names) {
        check(!name.isEmpty() && name == name.trimmed());
        check(!name.contains(QLatin1Char(';')) && !name.contains(QLatin1Char('"')));
        if (!staysInTheScratchFolder(name))
            return 0;
    }
    check(CInPlaceFilePaths::SplitText(CInPlaceFilePaths::JoinPaths(names)) == names);

    const QStringList entries = CInPlaceFilePaths::ParseText(text, folder);
    check(entries.size() <= CInPlaceFilePaths::kMaxEntries);
    for (const QString& entry : entries) {
        const QString full = CInPlaceFilePaths::FullPath(entry, folder);
        check(CInPlaceFilePaths::IsAbsolute(full));
        check(CInPlaceFilePaths::FullPath(full, folder) == full);
    }

    // The text also serves as a name and a pattern, split at its first "|".
    const qsizetype bar = text.indexOf(QLatin1Char('|'));
    if (bar >= 0) {
        const QString name = text.left(bar);
        const QString pattern = text.mid(bar + 1);
        const bool matches = CInPlaceFilePaths::MatchesWildCard(name, pattern);
        (void)matches;
        check(CInPlaceFilePaths::MatchesWildCard(name, QStringLiteral("*")));
        check(CInPlaceFilePaths::HasWildCards(name) ||
              CInPlaceFilePaths::MatchesWildCard(name, name));
    }
    return 0;
}
