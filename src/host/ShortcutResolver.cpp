#include "host/ShortcutResolver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// The packaged liblnk header pulls in the block I/O library's header for its file-handle
// functions, which are not used here and whose header is not packaged with it. Its feature
// header is stood in for, without that feature.
#if !defined(_LIBLNK_FEATURES_H)
#define _LIBLNK_FEATURES_H
#define LIBLNK_HAVE_MULTI_THREAD_SUPPORT 1
#endif
#include <liblnk.h>

#include <memory>
#include <vector>

namespace {

// liblnk reports failures through error objects that the caller must free, also when it does
// not want to read them.
struct LnkError
{
    LnkError() = default;
    ~LnkError() { liblnk_error_free(&error); }
    LnkError(const LnkError&) = delete;
    LnkError& operator=(const LnkError&) = delete;
    liblnk_error_t* error = nullptr;
};

struct LnkFileCloser
{
    void operator()(liblnk_file_t* file) const
    {
        LnkError error;
        liblnk_file_close(file, &error.error);
        LnkError freeError;
        liblnk_file_free(&file, &freeError.error);
    }
};
using LnkFile = std::unique_ptr<liblnk_file_t, LnkFileCloser>;

using SizeGetter = int (*)(liblnk_file_t*, size_t*, liblnk_error_t**);
using StringGetter = int (*)(liblnk_file_t*, uint8_t*, size_t, liblnk_error_t**);

// One of the link's optional strings; empty when the link does not hold it or it is unreadable.
QString readString(liblnk_file_t* file, SizeGetter getSize, StringGetter getString)
{
    size_t size = 0;
    LnkError sizeError;
    if (getSize(file, &size, &sizeError.error) != 1 || size <= 1)
        return {};
    // The string sizes come from the file; the file itself is bounded, so is any honest string.
    if (size > size_t(CShortcutResolver::kMaxShellLinkSize) * 4)
        return {};
    std::vector<uint8_t> buffer(size, 0);
    LnkError stringError;
    if (getString(file, buffer.data(), buffer.size(), &stringError.error) != 1)
        return {};
    buffer.back() = 0;
    return QString::fromUtf8(reinterpret_cast<const char*>(buffer.data()));
}

bool isPlausibleLinkFile(const QFileInfo& info)
{
    // Only regular files: opening a pipe or a device would wait for data that never comes.
    constexpr qint64 headerSize = 0x4C;
    return info.isFile() && info.size() >= headerSize &&
           info.size() <= CShortcutResolver::kMaxShellLinkSize;
}

quint32 readLe(const QByteArray& bytes, qint64 offset, int width)
{
    quint32 value = 0;
    for (int i = width - 1; i >= 0; --i)
        value = (value << 8) | quint8(bytes.at(offset + i));
    return value;
}

// liblnk takes the sizes written in a link at their word and allocates what they claim, several
// gigabytes for a hostile file of a few hundred bytes. Every size that says how much follows is
// checked against the file here first: the header and class id, the item id list, the link
// information block and its inner offsets, the counted strings and the extra data blocks.
bool hasConsistentSizes(const QByteArray& bytes)
{
    constexpr qint64 headerSize = 0x4C;
    static const char classId[16] = {'\x01', '\x14', '\x02', '\0', '\0', '\0', '\0', '\0',
                                     '\xC0', '\0',   '\0',   '\0', '\0', '\0', '\0', '\x46'};
    const qint64 size = bytes.size();
    if (size < headerSize || readLe(bytes, 0, 4) != headerSize ||
        bytes.mid(4, 16) != QByteArray::fromRawData(classId, 16))
        return false;
    const quint32 flags = readLe(bytes, 0x14, 4);
    qint64 at = headerSize;
    if (flags & 0x01) { // item id list
        if (at + 2 > size)
            return false;
        at += 2 + readLe(bytes, at, 2);
    }
    if (flags & 0x02) { // link information
        if (at + 8 > size)
            return false;
        const quint32 infoSize = readLe(bytes, at, 4);
        const quint32 infoHeaderSize = readLe(bytes, at + 4, 4);
        if (infoSize < 0x1C || at + infoSize > size || infoHeaderSize > infoSize)
            return false;
        const qint64 offsetsEnd = at + qMin<qint64>(infoHeaderSize, 0x24);
        for (qint64 field = at + 12; field + 4 <= offsetsEnd; field += 4) {
            if (readLe(bytes, field, 4) > infoSize)
                return false;
        }
        at += infoSize;
    }
    const bool unicode = flags & 0x80;
    for (quint32 stringFlag : {0x04u, 0x08u, 0x10u, 0x20u, 0x40u}) {
        if (!(flags & stringFlag))
            continue;
        if (at + 2 > size)
            return false;
        at += 2 + qint64(readLe(bytes, at, 2)) * (unicode ? 2 : 1);
    }
    // Extra data blocks up to the terminal block (size below 4) or the end of the file.
    while (at + 4 <= size) {
        const quint32 blockSize = readLe(bytes, at, 4);
        if (blockSize < 4)
            break;
        if (at + blockSize > size)
            return false;
        at += blockSize;
    }
    return at <= size;
}

// A relative path stored in a link is written with Windows separators and counts from the
// folder that holds the link file.
QString fromRelativePath(const QString& relative, const QString& linkPath)
{
    QString path = relative;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QDir::cleanPath(QFileInfo(linkPath).absolutePath() + QLatin1Char('/') + path);
}

} // namespace

bool CShortcutResolver::IsShortcutPath(const QString& path)
{
    return path.endsWith(QLatin1String(".lnk"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".pif"), Qt::CaseInsensitive);
}

std::optional<QString> CShortcutResolver::Resolve(const QString& path)
{
    const QFileInfo info(path);
    QString linkFile = path;
    if (info.isSymLink()) {
        linkFile = info.canonicalFilePath();
        if (linkFile.isEmpty())
            return std::nullopt; // dangling or looping chain
    }
    if (std::optional<QString> target = ReadShellLink(linkFile))
        return target;
    if (linkFile != path)
        return linkFile;
    return std::nullopt;
}

std::optional<QString> CShortcutResolver::ReadShellLink(const QString& path)
{
    if (path.isEmpty() || !isPlausibleLinkFile(QFileInfo(path)))
        return std::nullopt;
    QFile check(path);
    if (!check.open(QIODevice::ReadOnly) ||
        !hasConsistentSizes(check.read(CShortcutResolver::kMaxShellLinkSize)))
        return std::nullopt;
    check.close();

    liblnk_file_t* raw = nullptr;
    LnkError initError;
    if (liblnk_file_initialize(&raw, &initError.error) != 1 || !raw)
        return std::nullopt;
    // Freed without a close when opening fails; the closer copes with a file never opened.
    const QByteArray encoded = QFile::encodeName(path);
    LnkError openError;
    if (liblnk_file_open(raw, encoded.constData(), LIBLNK_OPEN_READ, &openError.error) != 1) {
        LnkError freeError;
        liblnk_file_free(&raw, &freeError.error);
        return std::nullopt;
    }
    const LnkFile file(raw);

    QString target = readString(file.get(), liblnk_file_get_utf8_local_path_size,
                                liblnk_file_get_utf8_local_path);
    if (target.isEmpty())
        target = readString(file.get(), liblnk_file_get_utf8_network_path_size,
                            liblnk_file_get_utf8_network_path);
    if (target.isEmpty()) {
        const QString relative = readString(file.get(), liblnk_file_get_utf8_relative_path_size,
                                            liblnk_file_get_utf8_relative_path);
        if (!relative.isEmpty())
            target = fromRelativePath(relative, path);
    }
    if (target.isEmpty())
        return std::nullopt;
    return target;
}
