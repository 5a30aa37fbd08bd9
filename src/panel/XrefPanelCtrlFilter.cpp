#include "panel/XrefPanelCtrl.h"
#include "panel/XrefPanelCtrl_p.h"

#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefTreeCtrl.h"

#include <QLineEdit>

void CXrefPanelCtrl::ShowFilterBar(bool show)
{
    if (!d->filterBar || d->filterBar->isHidden() == !show)
        return;
    d->filterBar->setVisible(show);
    OnSize(0, width(), height());
    if (show)
        d->filterBar->SetFilter(d->filter);
}

bool CXrefPanelCtrl::IsFilterBarShown() const
{
    return d->filterBar && !d->filterBar->isHidden();
}

QWidget* CXrefPanelCtrl::GetFilterBar() const
{
    return d->filterBar;
}

QString CXrefPanelCtrl::GetFilterText() const
{
    return d->filter.text;
}

bool CXrefPanelCtrl::IsProblemsOnlyFilter() const
{
    return d->filter.problemsOnly;
}

bool CXrefPanelCtrl::FilterAccepts(const CXrefPanelCtrlItem& item) const
{
    const CTroveListCtrl* list = GetListCtrl();
    return d->filter.Accepts(item, list ? &list->Model() : nullptr);
}

void CXrefPanelCtrl::SetFilter(const QString& text, bool problemsOnly)
{
    d->filter = {text.trimmed(), problemsOnly};
    // The field keeps what the user typed (spaces included) while it means the same filter.
    if (d->filterBar) {
        const ReferenceFilter shown = d->filterBar->Filter();
        if (shown.text != d->filter.text || shown.problemsOnly != d->filter.problemsOnly)
            d->filterBar->SetFilter(d->filter);
    }
    CTroveListCtrl* list = GetListCtrl();
    CXrefTreeCtrl* tree = GetTreeCtrl();
    if (!list || !tree)
        return;
    CTroveListCtrl::ItemFilter shows;
    if (d->filter.IsActive())
        shows = [this](const CXrefPanelCtrlItem& item) { return FilterAccepts(item); };
    // Each view reports the selected references it hides; the panel then follows as for any
    // selection the program changes.
    list->SetItemFilter(shows);
    tree->SetItemFilter(shows);
}
