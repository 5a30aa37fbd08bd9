#include "host/KvUiNavDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace {

CKvUiNavDialog::Handler& handler()
{
    static CKvUiNavDialog::Handler current;
    return current;
}

// "Images (*.png)|*.png;*.jpg|All Files (*.*)|*.*||" -> {"Images (*.png *.jpg)",
// "All Files (*)"}. The description's own bracketed pattern list, if any, is replaced by the
// real patterns so that what the user reads is what the dialog matches.
QStringList toNameFilters(const QString& filter)
{
    QStringList filters;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts.at(i).trimmed();
        if (description.isEmpty())
            break; // the "||" that ends the list
        QStringList patterns;
        for (const QString& pattern : parts.at(i + 1).split(QLatin1Char(';'))) {
            const QString trimmed = pattern.trimmed();
            if (trimmed == QLatin1String("*.*"))
                patterns << QStringLiteral("*");
            else if (!trimmed.isEmpty())
                patterns << trimmed;
        }
        if (patterns.isEmpty())
            patterns << QStringLiteral("*");
        const int open = description.lastIndexOf(QLatin1Char('('));
        if (open > 0 && description.endsWith(QLatin1Char(')')))
            description = description.left(open).trimmed();
        filters << description + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                       QLatin1Char(')');
    }
    return filters;
}

} // namespace

CKvUiNavDialog::CKvUiNavDialog() = default;
CKvUiNavDialog::~CKvUiNavDialog() = default;

void CKvUiNavDialog::SetDefaultExtension(const QString& extension)
{
    m_defaultExtension = extension.startsWith(QLatin1Char('.')) ? extension.mid(1) : extension;
}

void CKvUiNavDialog::SetFilter(const QString& filter)
{
    m_filter = filter;
    m_filterArray = toNameFilters(filter);
}

bool CKvUiNavDialog::DoModal(QWidget* parent)
{
    m_selected.clear();
    if (const Handler& current = handler())
        return current(*this, parent);
    return runFileDialog(parent);
}

CKvUiNavDialog::Handler CKvUiNavDialog::SetHandler(Handler replacement)
{
    Handler old = std::move(handler());
    handler() = std::move(replacement);
    return old;
}

bool CKvUiNavDialog::runFileDialog(QWidget* parent)
{
    // On the heap and watched: the parent may be destroyed while the dialog waits, and takes
    // its child dialog with it, which a dialog on the stack would not survive.
    QPointer<QFileDialog> watched = new QFileDialog(parent, m_caption);
    QFileDialog& dialog = *watched;
    const QFileInfo initial(m_initialPath);
    if (!m_initialPath.isEmpty()) {
        if (initial.isDir()) {
            dialog.setDirectory(initial.absoluteFilePath());
        } else {
            dialog.setDirectory(initial.absolutePath());
            if (!HasFlag(Folders))
                dialog.selectFile(initial.fileName());
        }
    }
    if (HasFlag(Folders)) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly, true);
    } else if (HasFlag(SaveFile)) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !HasFlag(ConfirmReplace));
    } else {
        dialog.setFileMode(HasFlag(MultipleFiles) ? QFileDialog::ExistingFiles
                                                  : QFileDialog::ExistingFile);
    }
    if (!HasFlag(Folders) && !m_filterArray.isEmpty())
        dialog.setNameFilters(m_filterArray);
    if (!m_defaultExtension.isEmpty())
        dialog.setDefaultSuffix(m_defaultExtension);
    if (HasFlag(AllowUrls))
        dialog.setSupportedSchemes({QStringLiteral("file"), QStringLiteral("http"),
                                    QStringLiteral("https"), QStringLiteral("ftp")});
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (!watched)
        return false;
    if (accepted)
        m_selected = watched->selectedFiles();
    delete watched.data();
    return !m_selected.isEmpty();
}
