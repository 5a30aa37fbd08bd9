// Packed DIBs reach the bitmap conversion from drawing files and from hosts; none may crash it.

#include "framework/PackedDib.h"
#include "services/DwgThumbnail.h"

#include <QGuiApplication>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Bitmaps need a GUI application; no screen is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const PackedDib dib(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    const QPixmap bitmap = TroveUI::CopyBitmapInfo(dib);
    (void)bitmap;
    return 0;
}
