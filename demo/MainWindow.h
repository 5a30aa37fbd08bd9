#pragma once

#include "DemoSettings.h"

#include <QMainWindow>

#include <memory>

class DemoCommands;
class DocumentRepository;
class DrawingView;
class HostPanel;
class QDockWidget;
class XrefDocument;

/// The demo host's main window: the open drawing in the middle and the reference panel in a
/// dock beside it, with the File and Help menus of a drawing application.
class MainWindow : public QMainWindow
{
public:
    /// @p repository (may be null) makes the panel a repository panel. @p profilePath is where
    /// the settings were loaded from and go back to (the default profile when empty).
    MainWindow(DemoSettings settings, std::unique_ptr<DocumentRepository> repository,
               QString profilePath = {});
    ~MainWindow() override;

    /// Opens the drawing at @p path. A drawing that cannot be read is reported in the strip (and
    /// in a message box once the window shows) and the one open stays; false then, with the
    /// reason in @p error.
    bool OpenDrawing(const QString& path, QString* error = nullptr);

    /// Takes the panel's and the window's layout into the settings and writes the profile; the
    /// reason when it cannot be written, else empty.
    QString SaveSettings();

    XrefDocument& Document() const { return *m_document; }
    HostPanel& Panel() const { return *m_panel; }
    DemoCommands& Commands() const { return *m_commands; }
    DrawingView& View() const { return *m_view; }
    DocumentRepository* Repository() const { return m_repository.get(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void openWithDialog();
    void documentRebuilt();
    void updateTitle();

    DemoSettings m_settings;
    QString m_profilePath;
    std::unique_ptr<XrefDocument> m_document;
    std::unique_ptr<DocumentRepository> m_repository;
    DrawingView* m_view = nullptr;
    QDockWidget* m_dock = nullptr;
    std::unique_ptr<HostPanel> m_panel;
    std::unique_ptr<DemoCommands> m_commands;
};
