#include "FileDialogStandIn.h"

FileDialogStandIn::FileDialogStandIn()
{
    m_previousDialog = CKvUiNavDialog::SetHandler([this](CKvUiNavDialog& dialog, QWidget*) {
        m_shown.push_back({false, dialog.Flags(), dialog.Caption(), dialog.Filter(),
                           dialog.FilterArray(), dialog.DefaultExtension(), dialog.InitialPath()});
        if (m_whileOpen)
            m_whileOpen();
        dialog.SetSelectedPaths(m_paths);
        return !m_paths.isEmpty();
    });
    m_previousBrowser = CKvUiFolderBrowser::SetHandler([this](CKvUiFolderBrowser& browser) {
        Shown shown;
        shown.folderBrowser = true;
        shown.caption = browser.Caption();
        shown.start = browser.StartFolder();
        m_shown.push_back(shown);
        if (m_whileOpen)
            m_whileOpen();
        browser.SetSelectedFolder(m_paths.value(0));
        return !m_paths.isEmpty();
    });
}

FileDialogStandIn::~FileDialogStandIn()
{
    CKvUiNavDialog::SetHandler(std::move(m_previousDialog));
    CKvUiFolderBrowser::SetHandler(std::move(m_previousBrowser));
}
