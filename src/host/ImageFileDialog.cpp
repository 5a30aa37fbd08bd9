#include "host/ImageFileDialog.h"

#include <QImageReader>

namespace {

QString imageFilter()
{
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns << QStringLiteral("*.") + QString::fromLatin1(format);
    return QObject::tr("Images (%1);;All Files (*)").arg(patterns.join(QLatin1Char(' ')));
}

} // namespace

CImageFileDialog::CImageFileDialog()
    : CImageFileDialog(QString(), LongNames | HideReadOnly | OverwritePrompt, nullptr, 1)
{}

CImageFileDialog::CImageFileDialog(const QString& title, unsigned flags, QWidget* parent, int mode)
    : QFileDialog(parent, title), m_flags(flags), m_mode(mode)
{
    setNameFilter(imageFilter());
    setFileMode(mode == 1 ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    setAcceptMode(mode == 1 ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    setOption(QFileDialog::DontConfirmOverwrite, !(flags & OverwritePrompt));
    setOption(QFileDialog::ReadOnly, false);
}

CImageFileDialog::~CImageFileDialog() = default;

CImageFileExtractDialog::~CImageFileExtractDialog() = default;
