// Packed bitmaps arrive from drawing files and other programs; none may crash the reader.

#include "framework/PackedDib.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const PackedDib dib(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    const QImage standard = dib.ToImage();
    const QImage packed = dib.ToImage(qint64(BitmapInfoHeader::kSize));
    (void)standard;
    (void)packed;
    return 0;
}
