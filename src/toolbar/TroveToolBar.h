#pragma once

#include "kvxreftroveui_export.h"

#include "toolbar/XrefToolBar.h"

/// The tool bar of the repository mode: the reference tool bar with the repository's menu, which
/// adds "attach from the repository". It writes no remembered states into its menu.
class KVXREFTROVEUI_EXPORT CTroveToolBar : public CXrefToolBar
{
    Q_OBJECT
public:
    /// The flags as for CXrefToolBar; the ones given here are the ones that count.
    explicit CTroveToolBar(bool attachDwg = true, bool attachImage = true, bool attachDwf = true,
                           bool attachDgn = true, bool attachPdf = true,
                           bool attachPointCloud = true, bool attachModel = true);
    ~CTroveToolBar() override;

    void OnUpdateCmdUI() override;
    /// Attach from the repository, then everything the reference tool bar runs.
    bool OnCommand(unsigned id) override;

protected:
    using CXrefToolBar::OnCreate;
    int OnCreate() override;
};
