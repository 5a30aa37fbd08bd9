#pragma once

// Fills a created panel the way the panel benchmarks measure it: a host drawing "Site" and
// @p count references "Ref-0", "Ref-1", ... below it, in one update.

#include "panel/XrefPanelCtrl.h"
#include "support/TestXrefItem.h"

#include <QApplication>

#include <functional>
#include <string>
#include <vector>

/// Shows @p panel, inserts the references and lets the views settle. @p decorate sets what a
/// benchmark needs beyond the name (type, path, size, status). With @p rootOnTop the host drawing
/// stays first whatever the sort. Returns the references in insertion order; the panel owns them.
inline std::vector<TestXrefItem*>
FillBenchPanel(CXrefPanelCtrl& panel, int count,
               const std::function<void(TestXrefItem&, int)>& decorate = {}, bool rootOnTop = true)
{
    panel.show();
    panel.BeginUpdate();
    auto* root = new TestXrefItem(panel, true);
    if (rootOnTop)
        root->sortItem = false;
    panel.InsertRootItem(*root);
    root->SetText(L"Site");
    std::vector<TestXrefItem*> items;
    items.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        auto* item = new TestXrefItem(panel);
        panel.InsertItem(*item, *root, nullptr);
        item->SetText(L"Ref-" + std::to_wstring(i));
        if (decorate)
            decorate(*item, i);
        items.push_back(item);
    }
    panel.EndUpdate();
    QApplication::processEvents();
    return items;
}
