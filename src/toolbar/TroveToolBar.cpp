#include "toolbar/TroveToolBar.h"

CTroveToolBar::CTroveToolBar(bool attachDwg, bool attachImage, bool attachDwf, bool attachDgn,
                             bool attachPdf, bool attachPointCloud, bool attachModel)
    : CXrefToolBar(true, true, true, true, true, true, true)
{
    init(attachDwg, attachImage, attachDwf, attachDgn, attachPdf, attachPointCloud, attachModel);
}

CTroveToolBar::~CTroveToolBar() = default;

int CTroveToolBar::OnCreate()
{
    return CXrefToolBar::OnCreate(1080);
}

void CTroveToolBar::OnUpdateCmdUI()
{
    // The repository's commands keep the states their menu resource gives them.
}

bool CTroveToolBar::OnCommand(unsigned id)
{
    if (id == 1086) {
        AttachFromTrove();
        return true;
    }
    return CXrefToolBar::OnCommand(id);
}
