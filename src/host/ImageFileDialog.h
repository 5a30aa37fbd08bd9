#pragma once

#include "kvhostservices_export.h"

#include <QFileDialog>
#include <QString>

/// The host's image file dialog: a file dialog for choosing a raster image, which may also fetch
/// an image from a URL into a temporary file.
class KVHOSTSERVICES_EXPORT CImageFileDialog : public QFileDialog
{
    Q_OBJECT
public:
    enum OpenFlags : unsigned {
        HideReadOnly = 0x4,
        OverwritePrompt = 0x2,
        LongNames = 0x200000,
    };

    /// No title, the flags HideReadOnly | OverwritePrompt | LongNames, no parent, and 1 for
    /// @p mode (open an existing image).
    CImageFileDialog();
    CImageFileDialog(const QString& title, unsigned flags, QWidget* parent, int mode);
    ~CImageFileDialog() override;

    unsigned Flags() const { return m_flags; }
    int Mode() const { return m_mode; }

    /// The local copy of an image chosen by URL; empty for a local file.
    QString& tempFile() { return m_tempFile; }
    const QString& tempFile() const { return m_tempFile; }
    /// The URL the image was chosen from; empty for a local file.
    QString& url() { return m_url; }
    const QString& url() const { return m_url; }

private:
    unsigned m_flags;
    int m_mode;
    QString m_tempFile;
    QString m_url;
};

/// The image file dialog used when an image is extracted from a drawing.
class KVHOSTSERVICES_EXPORT CImageFileExtractDialog : public CImageFileDialog
{
    Q_OBJECT
public:
    CImageFileExtractDialog() = default;
    ~CImageFileExtractDialog() override;
};
