#pragma once

#include "kvxreftroveui_export.h"

#include "views/KvSmPreview.h"

/// The panel's preview pane: the picture of the selected reference, as the host hands it over.
class KVXREFTROVEUI_EXPORT CXrefPreview : public KvSmPreview
{
    Q_OBJECT
public:
    explicit CXrefPreview(QWidget* parent = nullptr);

    /// Shows a new picture and repaints at once. A null @p info clears the pane. With @p bits,
    /// @p info is a header (and colour table) and the @p bitsSize bytes at @p bits are its
    /// pixels; without, @p info is a packed DIB.
    void SetPreviewBitmap(const PackedDib* info, const char* bits, qint64 bitsSize);
    /// True after SetPreviewBitmap was last called without a picture (and at first).
    bool HasNoPicture() const { return m_noPicture; }

private:
    bool m_noPicture = true;
};
