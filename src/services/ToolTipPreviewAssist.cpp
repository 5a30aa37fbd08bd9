#include "services/ToolTipPreviewAssist.h"

#include "host/KvDbRasterImageDef.h"
#include "services/DwgThumbnail.h"

#include <QCoreApplication>

namespace {

// Files that are not drawings are loaded at this working size, then reduced to the thumbnail.
constexpr int kRenderEdge = 128;
constexpr int kThumbnailEdge = 50;

} // namespace

CToolTipPreviewAssist* CToolTipPreviewAssist::GetCache()
{
    static CToolTipPreviewAssist* const instance = [] {
        auto* cache = new CToolTipPreviewAssist;
        // Pictures must go before the application object that made them; the cache object
        // itself lives on, empty, so that a late caller still finds a valid instance.
        qAddPostRoutine([] { GetCache()->releaseAll(); });
        return cache;
    }();
    return instance;
}

CToolTipPreviewAssist::CToolTipPreviewAssist() = default;
CToolTipPreviewAssist::~CToolTipPreviewAssist() = default;

void CToolTipPreviewAssist::releaseAll()
{
    m_cache.clear();
    m_rasterImageDef.reset();
}

QPixmap CToolTipPreviewAssist::GetPreview(std::wstring path)
{
    if (QPixmap cached = FindPreview(path); !cached.isNull())
        return cached;
    const PackedDib dib = TroveUI::ExtractDwgThumbnail(path);
    QPixmap picture = GeneratePreview(path, dib.IsNull() ? nullptr : &dib, false);
    AddPreview(std::move(path), picture);
    return picture;
}

QPixmap CToolTipPreviewAssist::FindPreview(std::wstring path) const
{
    const auto it = m_cache.find(path);
    return it == m_cache.end() ? QPixmap() : it->second;
}

void CToolTipPreviewAssist::AddPreview(std::wstring path, QPixmap bitmap)
{
    if (path.empty() || bitmap.isNull())
        return;
    m_cache[std::move(path)] = std::move(bitmap);
}

QPixmap CToolTipPreviewAssist::GeneratePreview(std::wstring path, const PackedDib* dib,
                                               bool ignoreDib)
{
    if (path.empty())
        return {};
    if (dib && !ignoreDib) {
        QPixmap picture = TroveUI::CopyBitmapInfo(*dib);
        if (!picture.isNull())
            return picture;
    }
    if (QPixmap cached = FindPreview(path); !cached.isNull())
        return cached;

    if (!m_rasterImageDef)
        m_rasterImageDef = KvDbRasterImageDef::Create();
    if (!m_rasterImageDef)
        return {};
    m_rasterImageDef->setSourceFileName(QString::fromStdWString(path));
    m_rasterImageDef->load(kRenderEdge, kRenderEdge);
    const PackedDib* thumbnail = m_rasterImageDef->getThumbnailDib(kThumbnailEdge, kThumbnailEdge);
    if (!thumbnail) {
        m_rasterImageDef->close();
        return {};
    }
    // The definition's DIB has its pixels right after a plain header.
    const QImage image = thumbnail->ToImage();
    QPixmap picture = image.isNull() ? QPixmap() : QPixmap::fromImage(image);
    m_rasterImageDef->close();
    AddPreview(path, picture);
    return picture;
}
