// Drawing thumbnails: reading the stored preview of 1,000 drawings (half BMP, half PNG, 50 to
// 200 KB each) and answering from the preview cache, against reading each whole file.

#include "services/DwgThumbnail.h"
#include "services/ToolTipPreviewAssist.h"
#include "support/DrawingFileBuilder.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int kFiles = 1000;

// Something like a plan: lines and circles in a few colours, different for every file, so that
// the PNG previews compress as real ones do.
QImage planPicture(int seed)
{
    QImage image(128, 96, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QRandomGenerator random{quint32(seed)};
    for (int i = 0; i < 40; ++i) {
        painter.setPen(QColor::fromHsv(random.bounded(360), 200, 160));
        painter.drawLine(random.bounded(128), random.bounded(96), random.bounded(128),
                         random.bounded(96));
    }
    for (int i = 0; i < 6; ++i)
        painter.drawEllipse(QPoint(random.bounded(128), random.bounded(96)), 8, 8);
    return image;
}

struct Corpus
{
    QTemporaryDir dir;
    std::vector<std::wstring> paths; // even indexes hold BMP previews, odd ones PNG
    qint64 bytes = 0;

    Corpus()
    {
        QRandomGenerator random(7);
        for (int i = 0; i < kFiles; ++i) {
            const QImage picture = planPicture(i);
            DrawingFileBuilder builder;
            builder.AddHeaderEntry();
            if (i % 2 == 0)
                builder.AddBmp(DrawingFileBuilder::BmpBytes(picture));
            else
                builder.AddPng(DrawingFileBuilder::PngBytes(picture));
            builder.AddWmf(QByteArray(2000, 'w'));
            builder.PadTo(50 * 1024 + random.bounded(150 * 1024));
            const QString path = dir.filePath(QStringLiteral("drawing%1.dwg").arg(i));
            builder.Write(path);
            bytes += QFile(path).size();
            paths.push_back(path.toStdWString());
        }
    }
};

const Corpus& corpus()
{
    static const Corpus files;
    return files;
}

// Walks the files of one kind (0: BMP, 1: PNG) round and round.
class Cycle
{
public:
    explicit Cycle(int kind) : m_index(kind) {}
    const std::wstring& next()
    {
        const std::wstring& path = corpus().paths[size_t(m_index)];
        m_index = (m_index + 2) % kFiles;
        return path;
    }

private:
    int m_index;
};

const char* kindName(int kind)
{
    return kind == 0 ? "BMP previews" : "PNG previews";
}

void ReadWholeFile(benchmark::State& state)
{
    Cycle files(int(state.range(0)));
    for (auto _ : state) {
        QFile file(QString::fromStdWString(files.next()));
        file.open(QIODevice::ReadOnly);
        const QByteArray bytes = file.readAll();
        benchmark::DoNotOptimize(bytes.constData());
    }
    state.SetLabel(kindName(int(state.range(0))));
}
BENCHMARK(ReadWholeFile)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void ExtractThumbnailCold(benchmark::State& state)
{
    Cycle files(int(state.range(0)));
    for (auto _ : state) {
        const PackedDib dib = TroveUI::ExtractDwgThumbnail(files.next());
        benchmark::DoNotOptimize(dib.Bytes().constData());
    }
    state.SetLabel(kindName(int(state.range(0))));
}
BENCHMARK(ExtractThumbnailCold)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// The whole first request of a picture but its storing: read the preview, make the bitmap.
void ExtractAndConvertCold(benchmark::State& state)
{
    Cycle files(int(state.range(0)));
    for (auto _ : state) {
        const QPixmap bitmap = TroveUI::CopyBitmapInfo(TroveUI::ExtractDwgThumbnail(files.next()));
        benchmark::DoNotOptimize(bitmap.cacheKey());
    }
    state.SetLabel(kindName(int(state.range(0))));
}
BENCHMARK(ExtractAndConvertCold)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void PreviewCacheHit(benchmark::State& state)
{
    CToolTipPreviewAssist& cache = *CToolTipPreviewAssist::GetCache();
    for (const std::wstring& path : corpus().paths) {
        if (cache.GetPreview(path).isNull())
            state.SkipWithError("a preview could not be made");
    }
    Cycle files(int(state.range(0)));
    for (auto _ : state) {
        const QPixmap bitmap = cache.GetPreview(files.next());
        benchmark::DoNotOptimize(bitmap.cacheKey());
    }
    state.SetLabel(kindName(int(state.range(0))));
}
BENCHMARK(PreviewCacheHit)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv); // bitmaps need the application
    benchmark::Initialize(&argc, argv);
    corpus(); // written once, before any timing
    benchmark::AddCustomContext("corpus", std::to_string(kFiles) + " drawings, " +
                                              std::to_string(corpus().bytes / 1024) + " KB");
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
