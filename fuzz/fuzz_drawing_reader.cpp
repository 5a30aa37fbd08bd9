// The demo host opens drawings from anywhere: its reader must refuse whatever it cannot read
// without crashing or allocating more than the file holds, and what it accepts must survive
// being written back and read again.

#include "DrawingFormat.h"
#include "DrawingFormat_p.h"

#include <QBuffer>
#include <QByteArray>
#include <QtEndian>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

DrawingReadResult read(QByteArray bytes)
{
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    return ReadDrawing(device, QStringLiteral("fuzzed.dwg"), DrawingReadScope::Everything);
}

bool same(const DrawingContents& a, const DrawingContents& b)
{
    return a.versionMagic == b.versionMagic && a.references == b.references &&
           a.preview.code == b.preview.code && a.preview.data == b.preview.data && a.body == b.body;
}

void check(const QByteArray& bytes)
{
    const DrawingReadResult first = read(bytes);
    if (!first.Ok()) {
        if (first.message.isEmpty())
            std::abort();
        return;
    }
    const QByteArray written = EncodeDrawing(first.contents);
    if (written.isEmpty())
        std::abort();
    const DrawingReadResult second = read(written);
    if (!second.Ok() || !same(first.contents, second.contents))
        std::abort();
}

// Mutations almost never keep the table's checksum right; a copy whose checksum is made to
// fit lets the fuzzer reach the table's own checks too.
QByteArray withFittingChecksum(QByteArray bytes)
{
    using namespace DrawingLayout;
    if (bytes.size() < DrawingFormat::kHeaderBytes)
        return {};
    const qint64 at = qFromLittleEndian<std::uint32_t>(bytes.constData() + kTableOffset);
    const qint64 length = qFromLittleEndian<std::uint32_t>(bytes.constData() + kTableOffset + 4);
    if (at > bytes.size() || length > bytes.size() - at)
        return {};
    const std::uint32_t crc = Crc32(bytes.mid(qsizetype(at), qsizetype(length)));
    qToLittleEndian(crc, bytes.data() + kTableOffset + 8);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    check(bytes);
    const QByteArray fitted = withFittingChecksum(bytes);
    if (!fitted.isEmpty())
        check(fitted);
    return 0;
}
