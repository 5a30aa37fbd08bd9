// Language modules bring their own menu resources. Whatever a module's tool bar menu holds, the
// tool bar either refuses to be created or works: every button, every menu choice, every command.
// The first input byte picks the construction flags and the tool bar kind, the rest is the menu.

#include "framework/ZuUiBitmapButton.h"
#include "framework/ZuUiMenu.h"
#include "resources/TroveResources.h"
#include "toolbar/TroveToolBar.h"
#include "toolbar/XrefBmpComboButton.h"
#include "toolbar/XrefToolBar.h"
#include "util/ResourceModule.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

struct Environment
{
    Environment(int* argc, char** argv)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QApplication>(*argc, argv);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        QDir(dir.path()).mkpath(QStringLiteral("menus"));
        module = std::make_unique<Util::ResourceModule>(dir.path(), QStringLiteral("fuzz"),
                                                        &TroveUI::DefaultResourceModule());
        TroveUI::SetResourceInstance(module.get());
        CZuUiMenu::SetTrackHandler(
            [this](QMenu&, unsigned, QPoint, QWidget*) { return nextChoice; });
    }

    void WriteMenus(const QByteArray& json)
    {
        for (const char* name : {"menus/2080.json", "menus/1080.json"}) {
            QFile file(dir.filePath(QString::fromLatin1(name)));
            if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
                file.write(json);
        }
    }

    std::unique_ptr<QApplication> app;
    QTemporaryDir dir;
    std::unique_ptr<Util::ResourceModule> module;
    unsigned nextChoice = 0;
};

void press(QWidget* button, QPoint where)
{
    QMouseEvent down(QEvent::MouseButtonPress, where, button->mapToGlobal(where), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(button, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, where, button->mapToGlobal(where), Qt::LeftButton,
                   Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(button, &up);
    QCoreApplication::processEvents();
}

} // namespace

// Never destroyed: widgets and the application would be torn down in no fixed order at exit.
static Environment* g_environment = nullptr;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    g_environment = new Environment(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Environment& environment = *g_environment;
    if (size < 1)
        return 0;
    const unsigned bits = data[0];
    environment.WriteMenus(
        QByteArray(reinterpret_cast<const char*>(data + 1), qsizetype(size - 1)));

    auto flag = [bits](int n) { return (bits >> n & 1u) == 0; };
    std::unique_ptr<CXrefToolBar> bar;
    if (bits & 0x80u)
        bar = std::make_unique<CTroveToolBar>(flag(0), flag(1), flag(2), flag(3), flag(4), flag(5),
                                              flag(6));
    else
        bar = std::make_unique<CXrefToolBar>(flag(0), flag(1), flag(2), flag(3), flag(4), flag(5),
                                             flag(6));
    QWidget host;
    if (bar->Create(&host)) {
        bar->EnableMenuItem(Trove::RemovePath, 1);
        bar->EnableMenuItem(Trove::ReloadAllXRefs, 3);
        CXrefBmpComboButton* splits[] = {bar->RefreshButton(), bar->AttachButton(),
                                         bar->ChangePathButton()};
        for (CXrefBmpComboButton* button : splits) {
            if (!button)
                continue;
            // Every entry of the button's drop-down, chosen once, then the main part.
            QList<unsigned> ids{0};
            if (QMenu* menu = CZuUiMenu::GetSubMenu(bar->Menu(), button->DropDownIndex())) {
                for (const QAction* action : menu->actions())
                    ids << action->data().toUInt();
            }
            for (unsigned id : ids) {
                environment.nextChoice = id;
                press(button, QPoint(button->width() - 2, 2));
                press(button, QPoint(1, 2));
            }
        }
        press(bar->HelpButton(), QPoint(1, 1));
    }
    for (unsigned id : {1081u, 1086u, 1176u, 30203u, 30204u, 30205u, 30206u, 0xFFFFFFFFu})
        bar->OnCommand(id);
    bar.reset();
    return 0;
}
