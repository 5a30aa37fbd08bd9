// The demo host: a drawing application's main window with the reference panel docked beside the
// drawing. With no arguments it opens the sample project in the user's data folder (writing it
// there first); with FILE it opens that drawing. --make-sample DIR writes the sample project and
// quits; --screenshot FILE renders the window offscreen, prints one line per reference and quits;
// --list FILE only prints the references; --report FILE writes the reference report (HTML or
// CSV by FILE's suffix) and quits; --repository DIR treats DIR as a document repository;
// --trace prints where the rows are and what the panel reports, for scripts that drive the
// window with real input.

#include "DemoCommands.h"
#include "DemoItems.h"
#include "DemoSettings.h"
#include "DocumentRepository.h"
#include "HostPanel.h"
#include "MainWindow.h"
#include "SampleWriter.h"
#include "XrefDocument.h"

#include "framework/ZuUiTheme.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "panel/KvXrefTroveUI.h"
#include "services/RmxImageSettings.h"
#include "views/TroveListCtrl.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTextStream>
#include <QTimer>

#include <cstring>
#include <memory>

namespace {

QString optionValue(int argc, char** argv, const char* name)
{
    const std::size_t length = std::strlen(name);
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], name) == 0 && i + 1 < argc)
            return QString::fromLocal8Bit(argv[i + 1]);
        if (std::strncmp(argv[i], name, length) == 0 && argv[i][length] == '=')
            return QString::fromLocal8Bit(argv[i] + length + 1);
    }
    return {};
}

bool hasOption(int argc, char** argv, const char* name)
{
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], name) == 0 ||
            (std::strncmp(argv[i], name, std::strlen(name)) == 0 &&
             argv[i][std::strlen(name)] == '='))
            return true;
    return false;
}

// The sample project in @p folder, written there when it is not there yet; the host drawing's
// path, or empty after reporting why not.
QString sampleIn(const QString& folder)
{
    const QString drawing = QDir(folder).filePath(QStringLiteral("Harbour site.dwg"));
    if (QFileInfo::exists(drawing))
        return drawing;
    QString error;
    const QString written = WriteSampleProject(folder, &error);
    if (written.isEmpty())
        QTextStream(stderr) << error << '\n';
    return written;
}

void printReferences(const XrefDocument& document)
{
    QTextStream out(stdout);
    const std::vector<Occurrence>& occurrences = document.Occurrences();
    for (std::size_t i = 0; i < occurrences.size(); ++i) {
        const Occurrence& o = occurrences[i];
        const PanelStatus status = ToPanelStatus(o.state);
        out << QString(o.depth * 2, QLatin1Char(' ')) << o.reference.name << '\t'
            << CXrefPanelCtrlItemStatus::ToString(status.code) << '\t'
            << (o.resolution.foundAt.isEmpty() ? QStringLiteral("-")
                                               : QDir::toNativeSeparators(o.resolution.foundAt))
            << '\n';
    }
}

int screenshot(MainWindow& window, const QCommandLineParser& parser)
{
    window.show();
    QApplication::processEvents();
    HostPanel& panel = window.Panel();
    panel.SetReferenceViewType(parser.value(QStringLiteral("view")) == QLatin1String("tree")
                                   ? CXrefPanelCtrl::FileReferenceViewType::TreeView
                                   : CXrefPanelCtrl::FileReferenceViewType::ListView);
    const QString name = parser.isSet(QStringLiteral("select"))
                             ? parser.value(QStringLiteral("select"))
                             : QStringLiteral("Grid");
    if (!name.isEmpty() && !panel.Select(name))
        QTextStream(stderr) << "No reference is named \"" << name << "\"\n";
    QApplication::processEvents();
    const QString file = parser.value(QStringLiteral("screenshot"));
    if (!window.grab().save(file)) {
        QTextStream(stderr) << "Cannot write " << file << '\n';
        return 1;
    }
    printReferences(window.Document());
    return 0;
}

// For scripts that drive the window with real input: where each list row is on the screen
// (after every refill), and what the panel reports back.
void trace(MainWindow& window)
{
    HostPanel& panel = window.Panel();
    const auto print = [](const QString& event, const QString& detail) {
        QTextStream(stdout) << event << '\t' << detail << Qt::endl;
    };
    panel.Trace = print;
    const auto printRows = [&panel, print] {
        CTroveListCtrl* list = panel.GetListCtrl();
        for (int row = 0; list && row < list->model()->rowCount(); ++row) {
            const CXrefPanelCtrlItem* item = list->ItemOfRow(row);
            if (!item)
                continue;
            const QRect cell =
                list->visualRect(list->IndexFromItem(*item, Trove::ListViewColumn::ReferenceName));
            const QPoint centre = list->viewport()->mapToGlobal(cell.center());
            print(QStringLiteral("row"), QStringLiteral("%1\t%2\t%3")
                                             .arg(QString::fromStdWString(item->GetText()))
                                             .arg(centre.x())
                                             .arg(centre.y()));
        }
        print(QStringLiteral("ready"), QString());
    };
    QObject::connect(&window.Document(), &XrefDocument::Rebuilt, &window, printRows,
                     Qt::QueuedConnection);
    QTimer::singleShot(0, &window, printRows);
}

int list(const QString& drawing)
{
    XrefDocument document;
    QString error;
    if (!document.Open(drawing, &error)) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    printReferences(document);
    return 0;
}

int report(MainWindow& window, const QString& file)
{
    // The panel is filled once the document's first listing has been handed on.
    QApplication::processEvents();
    const QString fault = window.Commands().ExportReport(file);
    if (!fault.isEmpty()) {
        QTextStream(stderr) << fault << '\n';
        return 1;
    }
    return 0;
}

int run(QApplication& app, const QCommandLineParser& parser)
{
    const bool reporting = parser.isSet(QStringLiteral("report"));
    const bool shooting = parser.isSet(QStringLiteral("screenshot")) || reporting;
    std::unique_ptr<DocumentRepository> repository;
    QString drawing = parser.positionalArguments().value(0);
    if (parser.isSet(QStringLiteral("repository"))) {
        const QString folder = parser.value(QStringLiteral("repository"));
        if (!QDir().mkpath(folder)) {
            QTextStream(stderr) << "Cannot make the repository folder " << folder << '\n';
            return 1;
        }
        if (drawing.isEmpty())
            drawing = sampleIn(folder);
        repository = std::make_unique<DocumentRepository>(folder);
        repository->SeedSample();
    } else if (drawing.isEmpty()) {
        drawing = sampleIn(QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                               .filePath(QStringLiteral("sample")));
    }
    if (drawing.isEmpty())
        return 1;

    // Pictures and reports show the panel as it first opens, whatever this user's profile says.
    DemoSettings settings;
    if (!shooting)
        settings.Load();
    MainWindow window(std::move(settings), std::move(repository));
    QString error;
    if (!window.OpenDrawing(drawing, &error)) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    if (reporting)
        return report(window, parser.value(QStringLiteral("report")));
    if (shooting)
        return screenshot(window, parser);
    window.show();
    if (parser.isSet(QStringLiteral("trace")))
        trace(window);
    return app.exec();
}

} // namespace

int main(int argc, char** argv)
{
    // Writing the sample, a picture or a report and listing open no window: none needs a
    // display.
    const bool headless = hasOption(argc, argv, "--make-sample") ||
                          hasOption(argc, argv, "--screenshot") ||
                          hasOption(argc, argv, "--list") || hasOption(argc, argv, "--report");
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The scale must be known before the application makes its screens.
    const QString scale = optionValue(argc, argv, "--scale");
    if (!scale.isEmpty() && scale.toDouble() > 0)
        qputenv("QT_SCALE_FACTOR", scale.toLatin1());
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("xref-demo"));
    QApplication::setApplicationDisplayName(QStringLiteral("External References demo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("make-sample"), QStringLiteral("Write the sample project to DIR and quit."),
         QStringLiteral("DIR")},
        {QStringLiteral("repository"),
         QStringLiteral("Treat DIR as a document repository (the sample goes there when no FILE "
                        "is given)."),
         QStringLiteral("DIR")},
        {QStringLiteral("screenshot"),
         QStringLiteral("Render the window to FILE, list the references and quit."),
         QStringLiteral("FILE")},
        {QStringLiteral("list"),
         QStringLiteral("Print one line per reference of FILE (name, status, found-at) and "
                        "quit.")},
        {QStringLiteral("report"),
         QStringLiteral("Write the reference report of the drawing to FILE (.html or .csv) and "
                        "quit."),
         QStringLiteral("FILE")},
        {QStringLiteral("trace"),
         QStringLiteral("Print where each row is on the screen and what the panel reports, for "
                        "scripts that drive the window.")},
        {QStringLiteral("dark"), QStringLiteral("Use the dark theme.")},
        {QStringLiteral("scale"), QStringLiteral("Scale the window by S (2 for a 2x screen)."),
         QStringLiteral("S")},
        {QStringLiteral("select"),
         QStringLiteral("Select the reference NAME in the picture (default: Grid)."),
         QStringLiteral("NAME")},
        {QStringLiteral("view"), QStringLiteral("Show the list or the tree view."),
         QStringLiteral("list|tree")},
    });
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

    if (parser.isSet(QStringLiteral("list"))) {
        if (parser.positionalArguments().isEmpty()) {
            QTextStream(stderr) << "--list needs a FILE\n";
            return 1;
        }
        return list(parser.positionalArguments().constFirst());
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
