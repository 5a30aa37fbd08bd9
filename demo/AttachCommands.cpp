#include "DemoCommands.h"

#include "DemoItems.h"
#include "DocumentRepository.h"
#include "HostPanel.h"
#include "XrefDocument.h"

#include "host/KvUiNavDialog.h"

#include <QDir>
#include <QFileInfo>

// Attaching: which files make which kind of reference, the file dialog filtered to a kind, and
// the reference record a chosen file becomes.

namespace {

struct KindInfo
{
    ReferenceKind kind;
    const char* description;
    const char* patterns;
};

const KindInfo kKinds[] = {
    {ReferenceKind::Drawing, "Drawings", "*.dwg"},
    {ReferenceKind::RasterImage, "Images", "*.png;*.jpg;*.jpeg;*.bmp;*.tif;*.tiff;*.gif"},
    {ReferenceKind::PdfUnderlay, "PDF files", "*.pdf"},
    {ReferenceKind::DwfUnderlay, "DWF files", "*.dwf;*.dwfx"},
    {ReferenceKind::DgnUnderlay, "DGN files", "*.dgn"},
    {ReferenceKind::PointCloud, "Point clouds", "*.e57;*.las;*.laz;*.pts"},
    {ReferenceKind::CoordinationModel, "Coordination models", "*.ifc"},
    {ReferenceKind::DataLink, "Data links", "*.csv;*.xlsx;*.xls"},
};

} // namespace

ReferenceKind DemoCommands::KindOfFile(const QString& path)
{
    const QString suffix = QStringLiteral("*.") + QFileInfo(path).suffix().toLower();
    for (const KindInfo& info : kKinds)
        if (QString::fromLatin1(info.patterns).split(QLatin1Char(';')).contains(suffix))
            return info.kind;
    return ReferenceKind::Drawing;
}

QString DemoCommands::FileFilter(ReferenceKind kind, bool anyKind)
{
    QString filter;
    QStringList all;
    for (const KindInfo& info : kKinds) {
        all << QString::fromLatin1(info.patterns);
        if (anyKind || info.kind == kind)
            filter += QStringLiteral("%1 (%2)|%2|")
                          .arg(QLatin1String(info.description), QLatin1String(info.patterns));
    }
    if (anyKind)
        filter.prepend(QStringLiteral("All references|%1|").arg(all.join(QLatin1Char(';'))));
    return filter + QLatin1Char('|');
}

QWidget* DemoCommands::dialogParent() const
{
    return m_panel.window();
}

void DemoCommands::AttachWithDialog(ReferenceKind kind, bool anyKind, bool fromRepository)
{
    if (!m_document.IsOpen())
        return message(QStringLiteral("Open a drawing first."));
    if (fromRepository && !m_repository)
        return message(QStringLiteral("No repository is open."));
    CKvUiNavDialog dialog;
    dialog.SetCaption(fromRepository ? QStringLiteral("Attach from Repository")
                                     : QStringLiteral("Select Reference File"));
    dialog.SetFilter(FileFilter(kind, anyKind));
    dialog.SetInitialPath(fromRepository ? m_repository->Folder()
                                         : QFileInfo(m_document.Path()).absolutePath());
    if (!dialog.DoModal(dialogParent()) || dialog.SelectedPaths().isEmpty())
        return;
    const QString path = dialog.SelectedPaths().constFirst();
    if (fromRepository && !m_repository->Contains(path))
        return message(
            QStringLiteral("\"%1\" is not in the repository.").arg(QFileInfo(path).fileName()));
    const QString fault = AttachFile(path, anyKind ? KindOfFile(path) : kind);
    if (!fault.isEmpty())
        message(fault);
}

QString DemoCommands::AttachFile(const QString& path, ReferenceKind kind)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return QStringLiteral("\"%1\" is not a file.").arg(path);
    ReferenceRecord record;
    record.kind = kind;
    // A second file of the same name gets a numbered name, as references need unique names.
    const QString base =
        info.completeBaseName().isEmpty() ? info.fileName() : info.completeBaseName();
    record.name = base;
    for (int n = 2; !m_document.CheckName(record.name).isEmpty() && n < 1000; ++n)
        record.name = QStringLiteral("%1 (%2)").arg(base).arg(n);
    // Files inside the drawing's folder are saved relative to it, so the project can move.
    const QDir hostFolder(QFileInfo(m_document.Path()).absolutePath());
    const QString relative = hostFolder.relativeFilePath(info.absoluteFilePath());
    record.savedPath =
        relative.startsWith(QLatin1String("..")) ? info.absoluteFilePath() : relative;
    if (const QString fault = m_document.Attach(record); !fault.isEmpty())
        return fault;
    if (m_repository && m_repository->Contains(path))
        m_repository->Add(path);
    finish(QStringLiteral("Attached \"%1\".").arg(record.name));
    return {};
}
