#include "DemoCommands.h"

#include "HostPanel.h"
#include "XrefDocument.h"

#include "host/KvUiNavDialog.h"
#include "panel/XrefReport.h"

#include <QDir>
#include <QFileInfo>

// The reference report, from the File menu and the command line.

QString DemoCommands::ExportReport(const QString& path)
{
    CXrefReport report(m_panel);
    if (m_document.IsOpen())
        report.SetTitle(QStringLiteral("External References of %1")
                            .arg(QFileInfo(m_document.Path()).fileName()));
    const QString fault = report.Write(path);
    message(fault.isEmpty()
                ? QStringLiteral("Wrote the report to %1.").arg(QDir::toNativeSeparators(path))
                : fault);
    return fault;
}

void DemoCommands::ExportReportWithDialog()
{
    CKvUiNavDialog dialog;
    dialog.SetFlags(CKvUiNavDialog::SaveFile | CKvUiNavDialog::ConfirmReplace);
    dialog.SetCaption(QStringLiteral("Export Report"));
    dialog.SetFilter(QStringLiteral("Web page (*.html)|*.html;*.htm|CSV table (*.csv)|*.csv||"));
    dialog.SetDefaultExtension(QStringLiteral("html"));
    const QFileInfo drawing(m_document.Path());
    dialog.SetInitialPath(m_document.IsOpen()
                              ? drawing.dir().filePath(drawing.completeBaseName() +
                                                       QStringLiteral(" references.html"))
                              : QString());
    if (!dialog.DoModal(dialogParent()) || dialog.SelectedPaths().isEmpty())
        return;
    QString path = dialog.SelectedPaths().constFirst();
    // A name typed without a suffix gets the web page's, as the dialog's first choice says.
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".html");
    ExportReport(path);
}
