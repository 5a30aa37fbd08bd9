#pragma once

// The panel's filter: a text and an "only problems" switch, the bar that edits them, and the
// test a reference must pass to be shown. Not installed.

#include <QString>
#include <QWidget>

class CTroveListModel;
class CXrefPanelCtrlItem;
class QLineEdit;
class QTimer;
class QToolButton;

/// What the user asked to see.
struct ReferenceFilter
{
    QString text;
    bool problemsOnly = false;

    bool IsActive() const { return !text.isEmpty() || problemsOnly; }
    /// Whether @p item is shown: with problemsOnly, its file must be missing, unresolved or out
    /// of date; with a text, its name, saved path, found-at path or status must contain the text,
    /// ignoring case. The list's row is read where there is one: its texts are the ones shown,
    /// kept as Qt strings, which makes the test cheap enough to run on every key.
    bool Accepts(const CXrefPanelCtrlItem& item, const CTroveListModel* rows) const;
    /// Not found, unresolved or needs reloading.
    static bool IsProblem(const CXrefPanelCtrlItem& item);
};

/// A search field with a clear button and an "Only problems" switch. Typing is applied after a
/// short pause, so that a fast typist does not filter on every letter; Enter applies at once and
/// Escape clears the field.
class FilterBar : public QWidget
{
    Q_OBJECT
public:
    explicit FilterBar(QWidget* parent = nullptr);

    ReferenceFilter Filter() const;
    /// Shows @p filter without reporting it.
    void SetFilter(const ReferenceFilter& filter);
    QLineEdit* Field() const { return m_field; }
    QToolButton* ProblemsButton() const { return m_problems; }

signals:
    void FilterChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* m_field;
    QToolButton* m_problems;
    QTimer* m_pause;
};
