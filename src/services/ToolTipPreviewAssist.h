#pragma once

#include "kvxreftroveui_export.h"

#include <QPixmap>

#include <map>
#include <memory>
#include <string>

class KvDbRasterImageDef;
class PackedDib;

/// The process-wide cache of file thumbnails, keyed by the exact path (letter case counts). A
/// drawing's picture comes from the preview stored in it; any other file is rendered through
/// the raster image definition. A picture, once made, stays for the life of the process, even
/// when the file changes; a file that gave no picture is tried again at every request.
/// The cache owns its pictures; callers get shared copies. Use on the user-interface thread.
class KVXREFTROVEUI_EXPORT CToolTipPreviewAssist
{
public:
    /// The single instance, made on first use.
    static CToolTipPreviewAssist* GetCache();

    CToolTipPreviewAssist(const CToolTipPreviewAssist&) = delete;
    CToolTipPreviewAssist& operator=(const CToolTipPreviewAssist&) = delete;

    /// The cached picture of @p path, or a new one made now and cached; null when none can be
    /// made (nothing is cached then).
    QPixmap GetPreview(std::wstring path);
    /// The cached picture of exactly @p path, or null; never reads the file.
    QPixmap FindPreview(std::wstring path) const;
    /// Stores or replaces the picture of @p path; ignored for an empty path or a null picture.
    void AddPreview(std::wstring path, QPixmap bitmap);

private:
    CToolTipPreviewAssist();
    ~CToolTipPreviewAssist();

    /// A picture from @p dib unless @p ignoreDib or it cannot be read; otherwise the cached one
    /// or, failing that, a 50 x 50 rendering of the file, which is cached.
    QPixmap GeneratePreview(std::wstring path, const PackedDib* dib, bool ignoreDib);
    void releaseAll();

    std::map<std::wstring, QPixmap> m_cache;
    std::unique_ptr<KvDbRasterImageDef> m_rasterImageDef;
};
