// Turning a drawing's packed DIB into a picture, against Qt's own bitmap-file reader decoding
// the same bytes: a 1024 x 768 preview in each layout drawings carry (32 bits with junk in the
// unused fourth byte, 24 bits, 8 bits with a colour table, 8-bit run lengths).

#include "services/DwgThumbnail.h"
#include "support/DibBuilder.h"

#include <QImage>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

std::uint32_t plan(int x, int y)
{
    const bool line = x % 64 == 0 || y % 48 == 0 || (x + y) % 97 == 0;
    return line ? 0x00202020u : 0x00F4F1E8u;
}

QByteArray runLengthRows()
{
    QByteArray rows;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; x += 64) {
            rows.append(char(1)).append(char(1));  // one line pixel
            rows.append(char(63)).append(char(0)); // then sheet
        }
        rows.append(char(0)).append(char(0));
    }
    return rows.append(char(0)).append(char(1));
}

DibBuilder layout(int which)
{
    switch (which) {
    case 0:
        return DibBuilder(kWidth, kHeight, 32).Pixels([](int x, int y) {
            return std::uint32_t((x * 7 + y) & 0xFF) << 24 | plan(x, y);
        });
    case 1:
        return DibBuilder(kWidth, kHeight, 24).Pixels(plan);
    case 2:
        return DibBuilder(kWidth, kHeight, 8)
            .ClrUsed(2)
            .Palette({qRgb(0xF4, 0xF1, 0xE8), qRgb(0x20, 0x20, 0x20)})
            .Pixels([](int x, int y) { return plan(x, y) == 0x00202020u ? 1u : 0u; });
    default:
        return DibBuilder(kWidth, kHeight, 8)
            .Compression(BitmapInfoHeader::Rle8)
            .ClrUsed(2)
            .Palette({qRgb(0xF4, 0xF1, 0xE8), qRgb(0x20, 0x20, 0x20)})
            .RawPixels(runLengthRows());
    }
}

const char* const kNames[] = {"32 bits", "24 bits", "8 bits", "8-bit run lengths"};

void DibToImage(benchmark::State& state)
{
    const PackedDib dib = layout(int(state.range(0))).Dib();
    for (auto _ : state) {
        const QImage image = TroveUI::DibToImage(dib);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(DibToImage)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

void QtBitmapReader(benchmark::State& state)
{
    const QByteArray file = layout(int(state.range(0))).FileBytes();
    for (auto _ : state) {
        const QImage image = QImage::fromData(file, "BMP");
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetLabel(kNames[state.range(0)]);
}
BENCHMARK(QtBitmapReader)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond);

} // namespace
