#pragma once

// What the in-place editor tests share: an active window with an owner widget that counts the
// keys reaching it, and a recorder of the editors' begin and end records.

#include "views/editors/LabelEditInfo_p.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWidget>

#include <vector>

class CountingOwner : public QWidget
{
public:
    explicit CountingOwner(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::StrongFocus); }
    int keyPresses = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        ++keyPresses;
        QWidget::keyPressEvent(event);
    }
};

/// Records what an editor reports; connect before Create.
struct LabelEditRecorder
{
    template <typename Editor> explicit LabelEditRecorder(Editor* editor)
    {
        m_begin = QObject::connect(editor, &Editor::beginLabelEdit,
                                   [this](const LabelEditInfo& info) { begins.push_back(info); });
        m_end = QObject::connect(editor, &Editor::endLabelEdit,
                                 [this](const LabelEditInfo& info) { ends.push_back(info); });
    }
    ~LabelEditRecorder()
    {
        QObject::disconnect(m_begin);
        QObject::disconnect(m_end);
    }
    LabelEditRecorder(const LabelEditRecorder&) = delete;
    LabelEditRecorder& operator=(const LabelEditRecorder&) = delete;

    std::vector<LabelEditInfo> begins;
    std::vector<LabelEditInfo> ends;

private:
    QMetaObject::Connection m_begin;
    QMetaObject::Connection m_end;
};

class InPlaceEditorTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_window.resize(420, 200);
        m_owner = new CountingOwner(&m_window);
        m_owner->setGeometry(10, 10, 300, 150);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        m_owner->setFocus();
    }
    void TearDown() override
    {
        // Editors still open go before the test's recorders do; closing the window would
        // otherwise end their edits into recorders already gone.
        qDeleteAll(m_window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
        flushDeletes();
    }

    /// Runs the deletions the editors asked for.
    static void flushDeletes()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QRect cell() const { return QRect(100, 20, 80, 22); }

    QWidget m_window;
    CountingOwner* m_owner = nullptr;
};
