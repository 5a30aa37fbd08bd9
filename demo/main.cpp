// The demo host. For now it shows what the library offers so far: the message strip and the
// library's icons and tool bar pictures in the current theme. Run with --screenshot FILE to
// write a picture instead of opening a window, and --dark for the dark theme.

#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "panel/KvXrefTroveUI.h"
#include "resources/ResourceIds.h"
#include "resources/TroveResources.h"
#include "services/TroveUIFunctions.h"
#include "services/XrefMessageBox.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

namespace {

QWidget* iconGrid(const char* const* names, size_t count, int edge, bool bitmaps)
{
    auto* grid = new QWidget;
    auto* layout = new QGridLayout(grid);
    const int columns = 6;
    for (size_t i = 0; i < count; ++i) {
        const CZuUiRmId id(TroveUI::ResourceInstance(), names[i]);
        const QIcon icon = bitmaps ? CZuUiRm::ThemedBitmap(id) : CZuUiRm::ThemedIcon(id);
        auto* picture = new QLabel;
        picture->setPixmap(icon.pixmap(QSize(edge, edge)));
        picture->setToolTip(QString::fromLatin1(names[i]));
        auto* caption = new QLabel(QString::fromLatin1(names[i]));
        caption->setStyleSheet(QStringLiteral("font-size: 8pt"));
        auto* cell = new QVBoxLayout;
        cell->addWidget(picture, 0, Qt::AlignHCenter);
        cell->addWidget(caption, 0, Qt::AlignHCenter);
        layout->addLayout(cell, int(i) / columns, int(i) % columns);
    }
    return grid;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("xref-demo"));
    kvXrefTroveUIInitialize();

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("screenshot"),
                      QStringLiteral("Write a picture to FILE and quit."), QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("dark"), QStringLiteral("Use the dark theme.")});
    parser.process(app);
    CZuUiTheme::Instance().SetDarkTheme(parser.isSet(QStringLiteral("dark")));

    QWidget window;
    window.setWindowTitle(QStringLiteral("External References - demo"));
    window.setAutoFillBackground(true);
    window.setPalette(CZuUiTheme::Instance().Palette());
    auto* layout = new QVBoxLayout(&window);

    using namespace TroveUI::Res;
    layout->addWidget(iconGrid(kStatusIconNames, std::size(kStatusIconNames), 16, false));
    layout->addWidget(iconGrid(kTypeIconNames, std::size(kTypeIconNames), 16, false));
    layout->addWidget(iconGrid(kBitmapNames, std::size(kBitmapNames), 24, true));

    auto* strip = new CXrefMessageBox;
    strip->SetMessage(QStringLiteral("%1 - a plan of %2")
                          .arg(TroveUI::ResString(1038))
                          .arg(QString::fromStdWString(TroveUI::FormatByteSize(2400016))));
    layout->addWidget(strip);
    window.resize(720, 420);

    const QString screenshot = parser.value(QStringLiteral("screenshot"));
    if (!screenshot.isEmpty()) {
        window.show();
        QApplication::processEvents();
        const bool saved = window.grab().save(screenshot);
        kvXrefTroveUITerminate();
        return saved ? 0 : 1;
    }
    window.show();
    const int result = app.exec();
    kvXrefTroveUITerminate();
    return result;
}
