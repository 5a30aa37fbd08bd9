#pragma once

#include "support/ModalStandIns.h"
#include "support/QtPrinters.h"

#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiBitmapButton.h"
#include "items/XrefPanelCtrlItem.h"
#include "toolbar/TroveToolBar.h"
#include "toolbar/XrefBmpComboButton.h"
#include "toolbar/XrefToolBar.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QCursor>
#include <QTest>
#include <QWidget>

#include <memory>
#include <vector>

/// Opens up the protected parts that the tests drive directly.
template <class Base> class Exposed : public Base
{
public:
    using Base::Base;
    using Base::EnableMenuItem;
    using Base::MapButtonProperties;
    using Base::UpdateButtonProperties;
};

/// One tool bar in a host window, every menu answered by a MenuTracker, and a record of what the
/// tool bar raised.
class ToolBarFixture : public testing::Test
{
protected:
    struct Raised
    {
        Trove::MenuItems item;
        std::vector<CXrefPanelCtrlItem*> items;
    };

    ToolBarFixture()
    {
        // The pointer rests away from the host, so that no button is drawn hot by chance.
        QCursor::setPos(790, 590);
        host.setGeometry(0, 0, 400, 60);
    }

    /// Builds and creates a tool bar of type @p Bar with the given flags; null when creation fails.
    template <class Bar, class... Flags> Bar* Make(Flags... flags)
    {
        auto made = std::make_unique<Exposed<Bar>>(flags...);
        QObject::connect(
            made.get(), &CXrefToolBar::MenuSelection,
            [this](Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>& items) {
                raised.push_back({item, items});
            });
        QObject::connect(made.get(), &CXrefToolBar::DisplayHelp, [this] { ++helps; });
        const bool created = made->Create(&host);
        bar = std::move(made);
        return created ? static_cast<Bar*>(bar.get()) : nullptr;
    }

    /// The test side of the tool bar that Make<Bar> built, with its protected parts open.
    template <class Bar = CXrefToolBar> Exposed<Bar>& Open()
    {
        return static_cast<Exposed<Bar>&>(*bar);
    }

    /// A press and release on the main part of @p button, then the posted command runs.
    static void ClickMain(QWidget* button)
    {
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(4, button->height() / 2));
        QCoreApplication::processEvents();
    }
    /// The same on the arrow part.
    static void ClickArrow(QWidget* button)
    {
        QTest::mouseClick(button, Qt::LeftButton, {},
                          QPoint(button->width() - 3, button->height() / 2));
        QCoreApplication::processEvents();
    }

    std::vector<Trove::MenuItems> RaisedItems() const
    {
        std::vector<Trove::MenuItems> items;
        for (const Raised& r : raised)
            items.push_back(r.item);
        return items;
    }

    MenuTracker menus;
    QWidget host;
    std::unique_ptr<CXrefToolBar> bar; // after the host: goes first, while the host still stands
    std::vector<Raised> raised;
    int helps = 0;
};
