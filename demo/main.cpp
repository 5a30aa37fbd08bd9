// The demo host: writes a small sample project (a harbour site drawing and its references) and
// shows the reference panel on it, with the tool bar, the list and tree views, the preview pane,
// rich tool tips and the message strip. Run with --screenshot FILE to write a picture instead of
// opening a window, --dark for the dark theme and --tree to start in the tree view.

#include "DemoHost.h"
#include "SampleProject.h"

#include "framework/ZuUiTheme.h"
#include "panel/KvXrefTroveUI.h"
#include "services/RmxImageSettings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>
#include <QTextStream>
#include <QVBoxLayout>
#include <QWidget>

#include <memory>
#include <optional>

namespace {

int run(QApplication& app, const QCommandLineParser& parser)
{
    // The project goes where the user says, else into a folder that is removed on exit.
    std::optional<QTemporaryDir> scratch;
    QString folder = parser.value(QStringLiteral("project"));
    if (folder.isEmpty()) {
        scratch.emplace();
        if (!scratch->isValid()) {
            QTextStream(stderr) << "Cannot make a folder for the sample project: "
                                << scratch->errorString() << '\n';
            return 1;
        }
        folder = scratch->path();
    }
    SampleProject project;
    if (!project.Write(folder)) {
        QTextStream(stderr) << "Cannot write the sample project to " << folder << '\n';
        return 1;
    }

    QWidget window;
    window.setWindowTitle(QStringLiteral("External References - demo"));
    window.setAutoFillBackground(true);
    window.setPalette(CZuUiTheme::Instance().Palette());
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto panel = std::make_unique<DemoPanel>();
    if (!panel->Open(project, &window)) {
        QTextStream(stderr) << "The panel could not be created\n";
        return 1;
    }
    layout->addWidget(panel.get());
    panel->ShowTree(parser.isSet(QStringLiteral("tree")));
    window.resize(1000, 620);

    const QString screenshot = parser.value(QStringLiteral("screenshot"));
    if (!screenshot.isEmpty()) {
        window.show();
        panel->SelectByName(QStringLiteral("Grid"));
        QApplication::processEvents();
        if (!window.grab().save(screenshot))
            return 1;
        // The tip is a window of its own; it goes next to the main picture.
        if (QWidget* tip = panel->ShowSelectedToolTip()) {
            QApplication::processEvents();
            QString tipFile = screenshot;
            tipFile.insert(tipFile.lastIndexOf(QLatin1Char('.')), QStringLiteral("-tooltip"));
            if (!tip->grab().save(tipFile))
                return 1;
        }
        return 0;
    }
    window.show();
    return app.exec();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("xref-demo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("screenshot"),
                      QStringLiteral("Write a picture to FILE and quit."), QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("dark"), QStringLiteral("Use the dark theme.")});
    parser.addOption({QStringLiteral("tree"), QStringLiteral("Start in the tree view.")});
    parser.addOption({QStringLiteral("project"),
                      QStringLiteral("Write the sample project to DIR and keep it."),
                      QStringLiteral("DIR")});
    parser.process(app);

    kvXrefTroveUIInitialize();
    // The views read the repository log-in flag while they draw.
    TroveUI::RmxImageSettings::New();
    TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(true);
    CZuUiTheme::Instance().SetDarkTheme(parser.isSet(QStringLiteral("dark")));
    const int result = run(app, parser);
    TroveUI::RmxImageSettings::Delete();
    kvXrefTroveUITerminate();
    return result;
}
