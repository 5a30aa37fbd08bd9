// Menu resources come with language modules. Whatever a menu resource holds, it either is
// refused or gives a menu on which every menu operation works: finding, reading, enabling,
// checking, renaming, inserting and removing entries, by command and by position.

#include "framework/ZuUiMenu.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

// Every command id in @p menu and its sub-menus, in menu order.
void collectIds(const QMenu* menu, std::vector<unsigned>& ids, int depth = 0)
{
    check(depth <= 16);
    for (int i = 0; i < CZuUiMenu::GetMenuItemCount(menu); ++i) {
        const unsigned id = CZuUiMenu::GetMenuItemID(menu, i);
        if (const QMenu* sub = CZuUiMenu::GetSubMenu(menu, i)) {
            check(id == CZuUiMenu::kPopupId);
            check(CZuUiMenu::GetMenuState(menu, unsigned(i), CZuUiMenu::ByPosition) &
                  CZuUiMenu::Popup);
            collectIds(sub, ids, depth + 1);
        } else if (id != 0) {
            ids.push_back(id);
        }
    }
}

void exercise(QMenu* menu)
{
    std::vector<unsigned> ids;
    collectIds(menu, ids);
    for (unsigned id : ids) {
        // Every command found while walking can be found by its id again.
        check(CZuUiMenu::FindItem(menu, id, CZuUiMenu::ByCommand) != nullptr);
        const int state = CZuUiMenu::GetMenuState(menu, id, CZuUiMenu::ByCommand);
        check(state >= 0);
        check(CZuUiMenu::EnableMenuItem(menu, id, CZuUiMenu::Grayed) >= 0);
        check(CZuUiMenu::CheckMenuItem(menu, id, CZuUiMenu::Checked) >= 0);
        check(CZuUiMenu::GetMenuState(menu, id, CZuUiMenu::ByCommand) & CZuUiMenu::Checked);
        (void)CZuUiMenu::GetMenuString(menu, id, CZuUiMenu::ByCommand);
    }
    const int count = CZuUiMenu::GetMenuItemCount(menu);
    check(CZuUiMenu::InsertMenu(menu, 0, CZuUiMenu::ByPosition, 99999, QStringLiteral("first")));
    check(CZuUiMenu::GetMenuItemCount(menu) == count + 1);
    check(CZuUiMenu::GetMenuItemID(menu, 0) == 99999);
    if (!ids.empty()) {
        check(CZuUiMenu::InsertMenu(menu, ids.back(), CZuUiMenu::ByCommand, 99998,
                                    QStringLiteral("before")));
        check(CZuUiMenu::ModifyMenu(menu, ids.front(), CZuUiMenu::ByCommand, ids.front(),
                                    QStringLiteral("renamed")));
        check(CZuUiMenu::RemoveMenu(menu, ids.front(), CZuUiMenu::ByCommand));
    }
    // Positions past the end and ids nobody has are answered, not followed.
    check(CZuUiMenu::GetMenuItemID(menu, 1 << 20) == CZuUiMenu::kPopupId);
    check(CZuUiMenu::GetMenuState(menu, 1u << 20, CZuUiMenu::ByPosition) == -1);
    check(CZuUiMenu::GetSubMenu(menu, -1) == nullptr);
    while (CZuUiMenu::GetMenuItemCount(menu) > 0)
        check(CZuUiMenu::RemoveMenu(menu, 0, CZuUiMenu::ByPosition));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::unique_ptr<QMenu> menu = CZuUiMenu::MenuFromJson(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (menu) {
        // The menu bar's drop-downs are what the panel and the tool bar pick from.
        for (int i = 0; i < CZuUiMenu::GetMenuItemCount(menu.get()); ++i) {
            if (QMenu* sub = CZuUiMenu::GetSubMenu(menu.get(), i))
                exercise(sub);
        }
        exercise(menu.get());
    }
    return 0;
}
