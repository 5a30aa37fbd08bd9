#include "views/XrefPreview.h"

CXrefPreview::CXrefPreview(QWidget* parent) : KvSmPreview(parent) {}

void CXrefPreview::SetPreviewBitmap(const PackedDib* info, const char* bits, qint64 bitsSize)
{
    m_noPicture = info == nullptr;
    if (!info)
        ClearDib();
    else if (bits)
        SetDib(*info, bits, bitsSize);
    else
        SetPackedDib(*info);
    // The host often renders the next picture right after this call; show this one now.
    repaint();
}
