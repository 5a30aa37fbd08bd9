// Shortcut files come from other systems and from anywhere on disk; no bytes in one may crash
// or hang the reader. The bytes are written to a scratch file because the reader works on
// files, as shortcuts are found on disk.
//
// Seeds: fuzz/corpus/fuzz_shortcut_resolver.

#include "host/ShortcutResolver.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <unistd.h>

namespace {

QString scratchPath()
{
    const QString folder =
        QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
    return QStringLiteral("%1/kvx-fuzz-%2.lnk").arg(folder).arg(::getpid());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QString path = scratchPath();
    static const QByteArray encoded = QFile::encodeName(path);
    const int fd = ::open(encoded.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (fd < 0)
        return 0;
    std::size_t written = 0;
    while (written < size) {
        const ssize_t n = ::write(fd, data + written, size - written);
        if (n <= 0)
            break;
        written += std::size_t(n);
    }
    ::close(fd);
    (void)CShortcutResolver::Resolve(path);
    return 0;
}
