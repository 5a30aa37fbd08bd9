// Drawing files come from anywhere; reading their preview must never crash or over-allocate,
// whatever the version header, preview directory or entries say.

#include "framework/PackedDib.h"
#include "services/DwgThumbnail.h"

#include <QBuffer>
#include <QByteArray>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Damaged pictures make the decoders complain at every run; the noise only slows fuzzing.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    const PackedDib dib = TroveUI::ExtractDwgThumbnail(device);
    // What the reader returns goes on to the picture conversion, as in the panel.
    const QImage image = TroveUI::DibToImage(dib);
    (void)image;
    return 0;
}
