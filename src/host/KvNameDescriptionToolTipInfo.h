#pragma once

#include "kvhostservices_export.h"

#include <QPixmap>
#include <QString>

/// What a rich tool tip shows: a name, a description of one or more lines and a thumbnail, and
/// whether the thumbnail and the description are wanted. The preview edge defaults to 128
/// device-independent pixels. The thumbnail is shared, not copied: its owner (usually the
/// preview cache) keeps it.
class KVHOSTSERVICES_EXPORT KvNameDescriptionToolTipInfo
{
public:
    KvNameDescriptionToolTipInfo(QString name, QString description, QPixmap preview,
                                 bool showPreview, bool showDetails)
        : m_name(std::move(name)), m_description(std::move(description)),
          m_preview(std::move(preview)), m_showPreview(showPreview), m_showDetails(showDetails)
    {}

    const QString& GetName() const { return m_name; }
    const QString& GetDescription() const { return m_description; }
    const QPixmap& GetPreviewBitmap() const { return m_preview; }
    bool GetShowPreview() const { return m_showPreview; }
    bool GetShowDetails() const { return m_showDetails; }

    int GetPreviewWidth() const { return m_previewWidth; }
    void SetPreviewWidth(int width) { m_previewWidth = width; }
    int GetPreviewHeight() const { return m_previewHeight; }
    void SetPreviewHeight(int height) { m_previewHeight = height; }

private:
    QString m_name;
    QString m_description;
    QPixmap m_preview;
    bool m_showPreview;
    bool m_showDetails;
    int m_previewWidth = 128;
    int m_previewHeight = 128;
};
