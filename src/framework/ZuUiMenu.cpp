#include "framework/ZuUiMenu.h"

#include "util/ResourceModule.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>

namespace {

constexpr const char* kFlagsProperty = "kvMenuEnableFlags";
constexpr const char* kCheckedProperty = "kvMenuChecked";

// Qt flips a checkable action when it is chosen; menu check marks here only change when the
// owner says so, so the stored mark is put back after every menu loop.
void restoreCheckMarks(QMenu* menu)
{
    for (QAction* action : menu->actions()) {
        action->setChecked(action->property(kCheckedProperty).toBool());
        if (QMenu* sub = action->menu())
            restoreCheckMarks(sub);
    }
}

void setChecked(QAction* action, bool checked)
{
    action->setProperty(kCheckedProperty, checked);
    action->setCheckable(checked);
    action->setChecked(checked);
}

CZuUiMenu::TrackHandler& trackHandler()
{
    static CZuUiMenu::TrackHandler handler;
    return handler;
}

unsigned commandId(const QAction* action)
{
    return action->data().isValid() ? action->data().toUInt() : 0u;
}

QAction* findByCommand(const QMenu* menu, unsigned id)
{
    for (QAction* action : menu->actions()) {
        if (action->isSeparator())
            continue;
        if (QMenu* sub = action->menu()) {
            if (QAction* found = findByCommand(sub, id))
                return found;
            continue;
        }
        if (commandId(action) == id)
            return action;
    }
    return nullptr;
}

QAction* makeAction(QMenu* menu, unsigned flags, unsigned id, const QString& text, QMenu* subMenu)
{
    QAction* action = nullptr;
    if (flags & CZuUiMenu::Separator) {
        action = new QAction(menu);
        action->setSeparator(true);
        return action;
    }
    if (flags & CZuUiMenu::Popup) {
        if (!subMenu)
            return nullptr;
        subMenu->setParent(menu, subMenu->windowFlags());
        subMenu->setTitle(text);
        action = subMenu->menuAction();
    } else {
        action = new QAction(text, menu);
        action->setData(id);
    }
    setChecked(action, flags & CZuUiMenu::Checked);
    action->setProperty(kFlagsProperty, flags & 3u);
    action->setEnabled(!(flags & 3u));
    return action;
}

bool fillFromJson(QMenu* menu, const QJsonArray& items, int depth)
{
    if (depth > 8)
        return false;
    for (const QJsonValue& value : items) {
        if (!value.isObject())
            return false;
        const QJsonObject item = value.toObject();
        if (item.value(QStringLiteral("separator")).toBool()) {
            CZuUiMenu::AppendMenu(menu, CZuUiMenu::Separator, 0, {});
        } else if (item.contains(QStringLiteral("items"))) {
            auto sub = std::make_unique<QMenu>();
            if (!fillFromJson(sub.get(), item.value(QStringLiteral("items")).toArray(), depth + 1))
                return false;
            CZuUiMenu::AppendMenu(menu, CZuUiMenu::Popup, 0,
                                  item.value(QStringLiteral("text")).toString(), sub.release());
        } else {
            const int id = item.value(QStringLiteral("id")).toInt(-1);
            if (id <= 0)
                return false;
            CZuUiMenu::AppendMenu(menu, CZuUiMenu::String, unsigned(id),
                                  item.value(QStringLiteral("text")).toString());
        }
    }
    return true;
}

} // namespace

std::unique_ptr<QMenu> CZuUiMenu::CreatePopupMenu()
{
    return std::make_unique<QMenu>();
}

std::unique_ptr<QMenu> CZuUiMenu::MenuFromJson(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return nullptr;
    const QJsonValue items = doc.object().value(QStringLiteral("items"));
    if (!items.isArray())
        return nullptr;
    auto menu = std::make_unique<QMenu>();
    if (!fillFromJson(menu.get(), items.toArray(), 0))
        return nullptr;
    return menu;
}

std::unique_ptr<QMenu> CZuUiMenu::LoadMenu(const Util::ResourceModule* module, unsigned id)
{
    if (!module)
        module = Util::CurrentResourceModule();
    if (!module)
        return nullptr;
    const QByteArray json = module->Data(QStringLiteral("menus/%1.json").arg(id));
    if (json.isEmpty())
        return nullptr;
    return MenuFromJson(json);
}

int CZuUiMenu::GetMenuItemCount(const QMenu* menu)
{
    return menu ? int(menu->actions().size()) : -1;
}

unsigned CZuUiMenu::GetMenuItemID(const QMenu* menu, int position)
{
    if (!menu || position < 0 || position >= menu->actions().size())
        return kPopupId;
    const QAction* action = menu->actions().at(position);
    if (action->isSeparator())
        return 0;
    if (action->menu())
        return kPopupId;
    return commandId(action);
}

QMenu* CZuUiMenu::GetSubMenu(const QMenu* menu, int position)
{
    if (!menu || position < 0 || position >= menu->actions().size())
        return nullptr;
    return menu->actions().at(position)->menu();
}

QAction* CZuUiMenu::FindItem(const QMenu* menu, unsigned item, unsigned flags)
{
    if (!menu)
        return nullptr;
    if (flags & ByPosition) {
        const auto actions = menu->actions();
        return item < unsigned(actions.size()) ? actions.at(int(item)) : nullptr;
    }
    return findByCommand(menu, item);
}

int CZuUiMenu::GetMenuState(const QMenu* menu, unsigned item, unsigned flags)
{
    const QAction* action = FindItem(menu, item, flags);
    if (!action)
        return -1;
    if (action->isSeparator())
        return Separator;
    int state = int(action->property(kFlagsProperty).toUInt() & 3u);
    if (action->property(kCheckedProperty).toBool())
        state |= Checked;
    if (action->menu())
        state |= Popup;
    return state;
}

QString CZuUiMenu::GetMenuString(const QMenu* menu, unsigned item, unsigned flags)
{
    const QAction* action = FindItem(menu, item, flags);
    return action ? action->text() : QString();
}

bool CZuUiMenu::AppendMenu(QMenu* menu, unsigned flags, unsigned id, const QString& text,
                           QMenu* subMenu)
{
    return InsertMenu(menu, unsigned(-1), flags | ByPosition, id, text, subMenu);
}

bool CZuUiMenu::InsertMenu(QMenu* menu, unsigned item, unsigned flags, unsigned id,
                           const QString& text, QMenu* subMenu)
{
    if (!menu)
        return false;
    QAction* before = nullptr;
    QMenu* target = menu;
    if (item != unsigned(-1)) {
        before = FindItem(menu, item, flags);
        if (!before && !(flags & ByPosition))
            return false;
        // A command found inside a sub-menu gets its new neighbour in that sub-menu.
        if (before && !menu->actions().contains(before)) {
            for (QObject* owner : before->associatedObjects()) {
                auto* container = qobject_cast<QMenu*>(owner);
                if (container && container->actions().contains(before)) {
                    target = container;
                    break;
                }
            }
        }
    }
    QAction* action = makeAction(target, flags, id, text, subMenu);
    if (!action)
        return false;
    target->insertAction(before, action);
    return true;
}

bool CZuUiMenu::ModifyMenu(QMenu* menu, unsigned item, unsigned flags, unsigned id,
                           const QString& text)
{
    QAction* action = FindItem(menu, item, flags);
    if (!action)
        return false;
    action->setText(text);
    if (!action->menu())
        action->setData(id);
    action->setSeparator(false);
    setChecked(action, flags & Checked);
    action->setProperty(kFlagsProperty, flags & 3u);
    action->setEnabled(!(flags & 3u));
    return true;
}

bool CZuUiMenu::RemoveMenu(QMenu* menu, unsigned item, unsigned flags)
{
    QAction* action = FindItem(menu, item, flags);
    if (!action)
        return false;
    for (QObject* owner : action->associatedObjects()) {
        if (auto* container = qobject_cast<QMenu*>(owner))
            container->removeAction(action);
    }
    if (QMenu* sub = action->menu())
        delete sub;
    else
        delete action;
    return true;
}

int CZuUiMenu::EnableMenuItem(QMenu* menu, unsigned item, unsigned flags)
{
    QAction* action = FindItem(menu, item, flags);
    if (!action)
        return -1;
    const int previous = int(action->property(kFlagsProperty).toUInt() & 3u);
    action->setProperty(kFlagsProperty, flags & 3u);
    action->setEnabled(!(flags & 3u));
    return previous;
}

int CZuUiMenu::CheckMenuItem(QMenu* menu, unsigned item, unsigned flags)
{
    QAction* action = FindItem(menu, item, flags);
    if (!action)
        return -1;
    const int previous = action->property(kCheckedProperty).toBool() ? int(Checked) : 0;
    setChecked(action, flags & Checked);
    return previous;
}

unsigned CZuUiMenu::TrackPopupMenu(QMenu* menu, unsigned flags, QPoint screenPoint, QWidget* owner)
{
    if (!menu || menu->actions().isEmpty())
        return 0;
    if (const TrackHandler& handler = trackHandler())
        return handler(*menu, flags, screenPoint, owner);
    const QAction* chosen = menu->exec(screenPoint);
    restoreCheckMarks(menu);
    return chosen && !chosen->menu() ? commandId(chosen) : 0u;
}

CZuUiMenu::TrackHandler CZuUiMenu::SetTrackHandler(TrackHandler handler)
{
    TrackHandler old = std::move(trackHandler());
    trackHandler() = std::move(handler);
    return old;
}
