#pragma once

#include "kvxreftroveui_export.h"

#include <functional>

class QEvent;
class QKeyEvent;
class QRect;
class QWidget;

/// The course of one in-place edit, the same for every editor: it begins once, when the editor
/// first has the focus; it ends once; Enter and Escape end it, Escape as a cancel; and the keys
/// the editor needs stay with it even when the host has shortcuts on them.
class KVXREFTROVEUI_TEST_EXPORT InPlaceEditSession
{
public:
    /// A text editor also keeps Delete and every Control combination.
    explicit InPlaceEditSession(bool textEditor) : m_textEditor(textEditor) {}

    /// Puts @p editor over @p rect of @p parent with @p controlId and the parent's font, runs
    /// @p fill (text or choices), shows the editor and gives it the focus, which begins the
    /// edit. Without a parent the editor is deleted later and false returned.
    static bool Place(QWidget* editor, const QRect& rect, QWidget* parent, int controlId,
                      const std::function<void()>& fill);

    bool IsCancelled() const { return m_cancelled; }
    bool HasEnded() const { return m_ended; }

    /// Answers a shortcut-override event for a key the editor keeps, so that no host shortcut
    /// takes it; true when the event was answered.
    bool ClaimShortcut(QEvent* event) const;
    /// For a key press in @p editor: Enter or Escape gives the focus to the editor's owner and
    /// returns true, and the caller ends the edit. Escape marks the edit cancelled; any other
    /// character clears the mark.
    bool EndingKey(QWidget* editor, QKeyEvent* event);
    /// True the first time only, unless the edit has ended: send the begin record now.
    bool Begin();
    /// True the first time only: send the end record now.
    bool End();

    /// Keys that an open editor keeps: Enter and Escape end the edit, and a text editor needs
    /// Delete and every Control combination for editing. Without this, a host shortcut on
    /// Delete would delete the selected references while the user meant a character.
    static bool KeepsKey(const QKeyEvent& event, bool textEditor);

private:
    bool m_textEditor;
    bool m_cancelled = false;
    bool m_begun = false;
    bool m_ended = false;
};
