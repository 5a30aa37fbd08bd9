// The demo host: opens a drawing (by default a sample project it writes first: a harbour site
// drawing and its references) and shows the reference panel on it, with the tool bar, the list
// and tree views, the preview pane, rich tool tips and the message strip. Run with --screenshot
// FILE to write a picture instead of opening a window, --dark for the dark theme, --tree to start
// in the tree view, and --make-sample DIR to write the sample project and quit.

#include "DemoHost.h"
#include "SampleWriter.h"
#include "XrefDocument.h"

#include "framework/ZuUiTheme.h"
#include "panel/KvXrefTroveUI.h"
#include "services/RmxImageSettings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>
#include <QTextStream>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

namespace {

QString sampleProject(std::optional<QTemporaryDir>& scratch, const QString& folder)
{
    // The project goes where the user says, else into a folder that is removed on exit.
    QString target = folder;
    if (target.isEmpty()) {
        scratch.emplace();
        if (!scratch->isValid()) {
            QTextStream(stderr) << "Cannot make a folder for the sample project: "
                                << scratch->errorString() << '\n';
            return {};
        }
        target = scratch->path();
    }
    QString error;
    const QString drawing = WriteSampleProject(target, &error);
    if (drawing.isEmpty())
        QTextStream(stderr) << error << '\n';
    return drawing;
}

int run(QApplication& app, const QCommandLineParser& parser)
{
    std::optional<QTemporaryDir> scratch;
    const QString drawing = parser.positionalArguments().isEmpty()
                                ? sampleProject(scratch, parser.value(QStringLiteral("project")))
                                : parser.positionalArguments().constFirst();
    if (drawing.isEmpty())
        return 1;
    XrefDocument document;
    QString error;
    if (!document.Open(drawing, &error)) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }

    QWidget window;
    window.setWindowTitle(QStringLiteral("External References - demo"));
    window.setAutoFillBackground(true);
    window.setPalette(CZuUiTheme::Instance().Palette());
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto panel = std::make_unique<DemoPanel>();
    if (!panel->Open(document, &window)) {
        QTextStream(stderr) << "The panel could not be created\n";
        return 1;
    }
    layout->addWidget(panel.get());
    panel->ShowTree(parser.isSet(QStringLiteral("tree")));
    window.resize(1000, 620);

    const QString screenshot = parser.value(QStringLiteral("screenshot"));
    if (!screenshot.isEmpty()) {
        window.show();
        panel->SelectByName(parser.isSet(QStringLiteral("select"))
                                ? parser.value(QStringLiteral("select"))
                                : QStringLiteral("Grid"));
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
    // Writing the sample opens no window, so it needs no display: a build machine has none.
    const bool makeSample = std::any_of(argv + 1, argv + argc, [](const char* arg) {
        return std::strcmp(arg, "--make-sample") == 0 ||
               std::strncmp(arg, "--make-sample=", 14) == 0;
    });
    if (makeSample && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("xref-demo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("screenshot"),
                      QStringLiteral("Write a picture to FILE and quit."), QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("dark"), QStringLiteral("Use the dark theme.")});
    parser.addOption({QStringLiteral("select"),
                      QStringLiteral("Select the reference NAME in the picture (default: Grid)."),
                      QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("tree"), QStringLiteral("Start in the tree view.")});
    parser.addOption({QStringLiteral("project"),
                      QStringLiteral("Write the sample project to DIR and keep it."),
                      QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("make-sample"),
                      QStringLiteral("Write the sample project to DIR and quit."),
                      QStringLiteral("DIR")});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The drawing to open (default: the sample)."));
    parser.process(app);

    if (parser.isSet(QStringLiteral("make-sample"))) {
        QString error;
        const QString drawing =
            WriteSampleProject(parser.value(QStringLiteral("make-sample")), &error);
        if (drawing.isEmpty()) {
            QTextStream(stderr) << error << '\n';
            return 1;
        }
        QTextStream(stdout) << drawing << '\n';
        return 0;
    }

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
