#pragma once

// The demo's real main window on a fresh copy of the sample project, with the settings profile
// in the scratch folder and every dialog answered by a stand-in.

#include "DemoCommands.h"
#include "DemoItems.h"
#include "DemoSettings.h"
#include "DocumentRepository.h"
#include "DrawingFormat.h"
#include "HostPanel.h"
#include "MainWindow.h"
#include "SampleWriter.h"
#include "XrefDocument.h"

#include "support/FileDialogStandIn.h"
#include "support/ModalStandIns.h"
#include "support/QtPrinters.h"

#include "panel/KvXrefTroveUI.h"
#include "services/RmxImageSettings.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <memory>

class DemoWindowTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        // Nothing a test does may reach the user's own profile or data.
        QStandardPaths::setTestModeEnabled(true);
        static const bool initialised = [] {
            kvXrefTroveUIInitialize();
            return true;
        }();
        (void)initialised;
        if (!TroveUI::RmxImageSettings::IsValueCreated())
            TroveUI::RmxImageSettings::New();
        TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(true);
    }

    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_drawing = WriteSampleProject(Project(), &m_error);
        ASSERT_FALSE(m_drawing.isEmpty()) << m_error.toStdString();
    }

    void TearDown() override { m_window.reset(); }

    QString Project(const QString& relative = {}) const
    {
        return QDir(m_dir.filePath(QStringLiteral("project"))).filePath(relative);
    }
    QString ProfilePath() const { return m_dir.filePath(QStringLiteral("profile.xml")); }

    /// Opens @p drawing (the sample's host drawing by default) in a new window.
    void Open(const QString& drawing = {}, std::unique_ptr<DocumentRepository> repository = {},
              DemoSettings settings = {})
    {
        m_window.reset();
        m_window =
            std::make_unique<MainWindow>(std::move(settings), std::move(repository), ProfilePath());
        m_window->resize(1200, 700);
        m_window->show();
        ASSERT_TRUE(m_window->OpenDrawing(drawing.isEmpty() ? m_drawing : drawing, &m_error))
            << m_error.toStdString();
        Settle();
    }

    /// Lets the queued refill of the panel run.
    static void Settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    HostPanel& Panel() const { return m_window->Panel(); }
    XrefDocument& Document() const { return m_window->Document(); }

    /// The item named @p name; fails the test when there is none.
    DemoItem* Item(const QString& name) const
    {
        DemoItem* item = Panel().FindItem(name);
        EXPECT_NE(item, nullptr) << "no reference named " << name.toStdString();
        return item;
    }
    std::vector<CXrefPanelCtrlItem*> Items(std::initializer_list<const char*> names) const
    {
        std::vector<CXrefPanelCtrlItem*> items;
        for (const char* name : names)
            if (DemoItem* item = Item(QString::fromUtf8(name)))
                items.push_back(item);
        return items;
    }
    void Command(Trove::MenuItems command, std::initializer_list<const char*> names)
    {
        Panel().OnMenuSelection(command, Items(names));
        Settle();
    }
    bool Edit(const char* name, Trove::XrefProperties property, const QString& value)
    {
        DemoItem* item = Item(QString::fromUtf8(name));
        if (!item)
            return false;
        const bool accepted =
            Panel().OnApplyPropertyEdit({item}, property, value.toStdWString(), L"(before)");
        Settle();
        return accepted;
    }

    /// The host drawing's reference table as saved on disk.
    std::vector<ReferenceRecord> Saved() const
    {
        return ReadDrawing(m_drawing, DrawingReadScope::References).contents.references;
    }
    /// The saved record named @p name; an empty record when there is none.
    ReferenceRecord SavedRecord(const QString& name) const
    {
        for (const ReferenceRecord& record : Saved())
            if (record.name == name)
                return record;
        return {};
    }
    QByteArray Bytes(const QString& path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_dir;
    QString m_drawing;
    QString m_error;
    MessageBoxRecorder m_boxes;
    FileDialogStandIn m_dialogs;
    std::unique_ptr<MainWindow> m_window;
};
