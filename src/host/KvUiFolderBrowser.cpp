#include "host/KvUiFolderBrowser.h"

#include <QFileDialog>

namespace {

CKvUiFolderBrowser::Handler& handler()
{
    static CKvUiFolderBrowser::Handler current;
    return current;
}

} // namespace

CKvUiFolderBrowser::CKvUiFolderBrowser(QWidget* owner) : m_owner(owner) {}

bool CKvUiFolderBrowser::DoModal()
{
    m_selected.clear();
    if (const Handler& current = handler())
        return current(*this);
    // Watched, as the owner may be destroyed while the browser waits and take it along.
    QPointer<QFileDialog> dialog = new QFileDialog(m_owner, m_caption, m_startFolder);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly, true);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return false;
    if (accepted)
        m_selected = dialog->selectedFiles().value(0);
    delete dialog.data();
    return !m_selected.isEmpty();
}

CKvUiFolderBrowser::Handler CKvUiFolderBrowser::SetHandler(Handler replacement)
{
    Handler old = std::move(handler());
    handler() = std::move(replacement);
    return old;
}
