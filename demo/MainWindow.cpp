#include "MainWindow.h"

#include "DemoCommands.h"
#include "DocumentRepository.h"
#include "DrawingFormat.h"
#include "DrawingView.h"
#include "HostPanel.h"
#include "XrefDocument.h"

#include "framework/ZuUiMessageBox.h"
#include "framework/ZuUiTheme.h"
#include "host/KvToolTipService.h"
#include "host/KvUiNavDialog.h"
#include "panel/MenuItems.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QUndoStack>

namespace {

// The panel lays its children out itself and must not sit in a layout: this page gives it the
// dock's whole area on every resize.
class PanelPage : public QWidget
{
public:
    explicit PanelPage(QWidget* parent) : QWidget(parent) {}
    void SetPanel(QWidget* panel) { m_panel = panel; }
    QSize sizeHint() const override { return {640, 560}; }

protected:
    void resizeEvent(QResizeEvent*) override
    {
        if (m_panel)
            m_panel->setGeometry(rect());
    }

private:
    QWidget* m_panel = nullptr;
};

} // namespace

MainWindow::MainWindow(DemoSettings settings, std::unique_ptr<DocumentRepository> repository,
                       QString profilePath)
    : m_settings(std::move(settings)), m_profilePath(std::move(profilePath)),
      m_document(std::make_unique<XrefDocument>()), m_repository(std::move(repository))
{
    setPalette(CZuUiTheme::Instance().Palette());
    m_view = new DrawingView(this);
    setCentralWidget(m_view);

    m_dock = new QDockWidget(QStringLiteral("External References"), this);
    m_dock->setObjectName(QStringLiteral("ExternalReferences"));
    m_dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    auto* page = new PanelPage(m_dock);
    page->setAutoFillBackground(true);
    m_dock->setWidget(page);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);

    m_panel = std::make_unique<HostPanel>(*m_document, m_repository.get(), m_settings);
    m_panel->Create(L"File References", QRect(QPoint(0, 0), page->sizeHint()), page, 30000);
    page->SetPanel(m_panel.get());
    m_settings.ApplyTo(*m_panel);
    m_commands = std::make_unique<DemoCommands>(*m_panel, *m_document, m_repository.get());
    m_panel->SetCommands(m_commands.get());
    // The demo offers the filter field; Ctrl+F takes the keyboard there from anywhere.
    m_panel->ShowFilterBar(true);
    auto* findAction = new QAction(QStringLiteral("Filter References"), this);
    findAction->setShortcut(QKeySequence::Find);
    connect(findAction, &QAction::triggered, this, [this] {
        if (auto* field = m_panel->GetFilterBar()->findChild<QLineEdit*>()) {
            field->setFocus(Qt::ShortcutFocusReason);
            field->selectAll();
        }
    });
    addAction(findAction);

    // The document re-lists its references while a command or an edit is still running in the
    // panel; the panel is refilled once that has returned.
    connect(m_document.get(), &XrefDocument::Rebuilt, this, &MainWindow::documentRebuilt,
            Qt::QueuedConnection);
    connect(m_document.get(), &XrefDocument::StatesChanged, m_panel.get(),
            [this](const QList<int>& occurrences, const QString& message) {
                m_panel->MarkNeedsReloading(occurrences, message);
            });
    connect(m_commands.get(), &DemoCommands::SaveAttempted, this, &MainWindow::updateTitle);
    connect(m_commands.get(), &DemoCommands::OpenDrawingRequested, this,
            [this](const QString& path) { OpenDrawing(path); });

    buildMenus();
    resize(1280, 760);
    resizeDocks({m_dock}, {700}, Qt::Horizontal);
    if (!m_settings.windowGeometry.isEmpty())
        restoreGeometry(m_settings.windowGeometry);
    if (!m_settings.windowState.isEmpty())
        restoreState(m_settings.windowState);
    updateTitle();
}

MainWindow::~MainWindow()
{
    KvToolTipService::Instance()->Hide();
    // Items and views go before the document and the commands they point at.
    m_panel.reset();
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("&Open..."), QKeySequence::Open, this,
                    &MainWindow::openWithDialog);
    file->addAction(QStringLiteral("&Save"), QKeySequence::Save, this,
                    [this] { m_commands->Save(); });
    file->addSeparator();
    QMenu* attach = file->addMenu(QStringLiteral("&Attach"));
    const std::pair<const char*, Trove::MenuItems> attachCommands[] = {
        {"&Drawing...", Trove::AttachDWG},
        {"&Image...", Trove::AttachImage},
        {"&PDF Underlay...", Trove::AttachPDF},
        {"D&WF Underlay...", Trove::AttachDWF},
        {"D&GN Underlay...", Trove::AttachDGN},
        {"Point &Cloud...", Trove::AttachPointCloud},
        {"Coordination &Model...", Trove::AttachOrbiskModel},
        {"&Any Reference...", Trove::Attach},
    };
    for (const auto& [text, command] : attachCommands)
        attach->addAction(QString::fromLatin1(text), this,
                          [this, command = command] { m_commands->Run(command, {}); });
    if (m_repository)
        file->addAction(QStringLiteral("Attach from &Repository..."), this,
                        [this] { m_commands->Run(Trove::AttachFromTrove, {}); });
    file->addSeparator();
    file->addAction(QStringLiteral("&Refresh"), QKeySequence::Refresh, this,
                    [this] { m_commands->Run(Trove::Refresh, {}); });
    file->addAction(QStringLiteral("Reload A&ll References"), this,
                    [this] { m_commands->Run(Trove::ReloadAllXRefs, {}); });
    file->addSeparator();
    file->addAction(QStringLiteral("Export &report..."), this,
                    [this] { m_commands->ExportReportWithDialog(); });
    file->addSeparator();
    file->addAction(QStringLiteral("E&xit"), QKeySequence::Quit, this, &QWidget::close);

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* undo = m_commands->UndoStack().createUndoAction(this, QStringLiteral("&Undo"));
    undo->setShortcuts(QKeySequence::Undo);
    edit->addAction(undo);
    QAction* redo = m_commands->UndoStack().createRedoAction(this, QStringLiteral("&Redo"));
    // Both conventions: Ctrl+Shift+Z where the platform says so, Ctrl+Y everywhere.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const QKeySequence& key :
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)})
        if (!redoKeys.contains(key))
            redoKeys.append(key);
    redo->setShortcuts(redoKeys);
    edit->addAction(redo);
    edit->addSeparator();
    edit->addAction(QStringLiteral("Change Saved &Paths..."), this, [this] {
        m_commands->BulkRepath(DemoItems(m_panel->GetSelectedItems()),
                               CXrefBulkRepathDialog::Mode::FindAndReplace);
    });

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->addAction(QStringLiteral("External References &Help"), QKeySequence::HelpContents, this,
                    [this] { m_commands->Help(); });
}

bool MainWindow::OpenDrawing(const QString& path, QString* error)
{
    QString fault;
    const bool sameDrawing =
        m_document->IsOpen() && m_document->Path() == QFileInfo(path).absoluteFilePath();
    if (!m_document->Open(path, &fault)) {
        m_panel->ShowMessage(fault);
        // Before the window shows, the caller reports it (on the command line, say).
        if (isVisible())
            CZuUiMessageBox::Show(fault, 0x30, 0);
        if (error)
            *error = fault;
        return false;
    }
    // Undo steps name references of the drawing they were made in.
    if (!sameDrawing)
        m_commands->UndoStack().clear();
    return true;
}

void MainWindow::openWithDialog()
{
    CKvUiNavDialog dialog;
    dialog.SetCaption(QStringLiteral("Open Drawing"));
    dialog.SetFilter(QStringLiteral("Drawings (*.dwg)|*.dwg||"));
    dialog.SetInitialPath(m_document->IsOpen() ? QFileInfo(m_document->Path()).absolutePath()
                                               : QString());
    if (dialog.DoModal(this) && !dialog.SelectedPaths().isEmpty())
        OpenDrawing(dialog.SelectedPaths().constFirst());
}

void MainWindow::documentRebuilt()
{
    m_view->Show(m_document->Path(), m_document->Contents());
    m_panel->Fill();
    if (!m_document->Warning().isEmpty())
        m_panel->ShowMessage(m_document->Warning());
    updateTitle();
}

void MainWindow::updateTitle()
{
    const QString name =
        m_document->IsOpen() ? QFileInfo(m_document->Path()).fileName() : QStringLiteral("Demo");
    // The usual marker of unsaved changes: here only after a save failed.
    setWindowTitle(QStringLiteral("%1%2 - External References")
                       .arg(name, m_document->IsModified() ? QStringLiteral("*") : QString()));
}

QString MainWindow::SaveSettings()
{
    m_settings.TakeFrom(*m_panel);
    m_settings.windowGeometry = saveGeometry();
    m_settings.windowState = saveState();
    return m_settings.Save(m_profilePath);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_document->IsModified()) {
        // A save that failed earlier: try once more, and keep the window if it fails again.
        if (!m_commands->Save().isEmpty()) {
            const int answer = CZuUiMessageBox::Show(
                QStringLiteral("The drawing could not be saved. Close anyway?"), 0x4 | 0x30, 0);
            if (answer != CZuUiMessageBox::IdYes) {
                event->ignore();
                return;
            }
        }
    }
    SaveSettings();
    event->accept();
}
