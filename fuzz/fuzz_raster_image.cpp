// Raster references (pictures of every format the image readers know) have no drawing preview;
// their thumbnail is rendered from the file itself whenever the pointer rests on one. No file
// may crash, hang or make the renderer allocate beyond its picture limit.
//
// Files that read as PDF go to the PDF renderer, a separate library with fuzzing of its own;
// they are left out here so that the runs stay with the picture readers and our handling of
// what they report.

#include "host/KvDbRasterImageDef.h"

#include "framework/PackedDib.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

QString* g_path = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // In memory where there is such a file system: every run writes a file.
    static QTemporaryDir scratch(QDir(QStringLiteral("/dev/shm")).exists()
                                     ? QStringLiteral("/dev/shm/kvx-fuzz-XXXXXX")
                                     : QDir::tempPath() + QStringLiteral("/kvx-fuzz-XXXXXX"));
    g_path = new QString(scratch.filePath(QStringLiteral("picture")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    if (bytes.left(1024).contains("%PDF-"))
        return 0;
    {
        QFile file(*g_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(bytes);
    }
    KvDbRasterImageDef definition;
    definition.setSourceFileName(*g_path);
    if (definition.load(128, 128)) {
        if (const PackedDib* thumbnail = definition.getThumbnailDib(50, 50)) {
            const QImage image = thumbnail->ToImage();
            if (image.isNull() || image.width() > 50 || image.height() > 50)
                std::abort();
        }
    }
    definition.close();
    return 0;
}
