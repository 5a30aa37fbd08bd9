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
    m_selected = QFileDialog::getExistingDirectory(m_owner, m_caption, m_startFolder,
                                                   QFileDialog::ShowDirsOnly);
    return !m_selected.isEmpty();
}

CKvUiFolderBrowser::Handler CKvUiFolderBrowser::SetHandler(Handler replacement)
{
    Handler old = std::move(handler());
    handler() = std::move(replacement);
    return old;
}
