#include "framework/ZuUiMessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace {

CZuUiMessageBox::Handler& handler()
{
    static CZuUiMessageBox::Handler current;
    return current;
}

int showDefault(const QString& text, const QString& caption, unsigned type)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(caption);
    box.setText(text);
    switch (type & 0xF0) {
    case CZuUiMessageBox::IconError:
        box.setIcon(QMessageBox::Critical);
        break;
    case CZuUiMessageBox::IconQuestion:
        box.setIcon(QMessageBox::Question);
        break;
    case CZuUiMessageBox::IconWarning:
        box.setIcon(QMessageBox::Warning);
        break;
    case CZuUiMessageBox::IconInformation:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        break;
    }
    struct Choice
    {
        QMessageBox::StandardButton button;
        int result;
    };
    QVector<Choice> choices;
    switch (type & 0x0F) {
    case CZuUiMessageBox::OkCancel:
        choices = {{QMessageBox::Ok, CZuUiMessageBox::IdOk},
                   {QMessageBox::Cancel, CZuUiMessageBox::IdCancel}};
        break;
    case CZuUiMessageBox::AbortRetryIgnore:
        choices = {{QMessageBox::Abort, CZuUiMessageBox::IdAbort},
                   {QMessageBox::Retry, CZuUiMessageBox::IdRetry},
                   {QMessageBox::Ignore, CZuUiMessageBox::IdIgnore}};
        break;
    case CZuUiMessageBox::YesNoCancel:
        choices = {{QMessageBox::Yes, CZuUiMessageBox::IdYes},
                   {QMessageBox::No, CZuUiMessageBox::IdNo},
                   {QMessageBox::Cancel, CZuUiMessageBox::IdCancel}};
        break;
    case CZuUiMessageBox::YesNo:
        choices = {{QMessageBox::Yes, CZuUiMessageBox::IdYes},
                   {QMessageBox::No, CZuUiMessageBox::IdNo}};
        break;
    case CZuUiMessageBox::RetryCancel:
        choices = {{QMessageBox::Retry, CZuUiMessageBox::IdRetry},
                   {QMessageBox::Cancel, CZuUiMessageBox::IdCancel}};
        break;
    default:
        choices = {{QMessageBox::Ok, CZuUiMessageBox::IdOk}};
        break;
    }
    QMessageBox::StandardButtons buttons;
    for (const Choice& choice : choices)
        buttons |= choice.button;
    box.setStandardButtons(buttons);
    const int defaultIndex = (type & CZuUiMessageBox::DefButton3)   ? 2
                             : (type & CZuUiMessageBox::DefButton2) ? 1
                                                                    : 0;
    if (defaultIndex < choices.size())
        box.setDefaultButton(choices[defaultIndex].button);
    const auto pressed = QMessageBox::StandardButton(box.exec());
    for (const Choice& choice : choices) {
        if (choice.button == pressed)
            return choice.result;
    }
    // Closing the box counts as its cancel or, without one, its only button.
    for (const Choice& choice : choices) {
        if (choice.result == CZuUiMessageBox::IdCancel)
            return choice.result;
    }
    return choices.size() == 1 ? choices.front().result : CZuUiMessageBox::IdCancel;
}

} // namespace

int CZuUiMessageBox::Show(const QString& text, unsigned type, unsigned helpId)
{
    const QString caption = ApplicationTitle();
    if (const Handler& current = handler())
        return current(text, caption, type, helpId);
    return showDefault(text, caption, type);
}

QString CZuUiMessageBox::ApplicationTitle()
{
    return QGuiApplication::applicationDisplayName();
}

void CZuUiMessageBox::SetApplicationTitle(const QString& title)
{
    QGuiApplication::setApplicationDisplayName(title);
}

CZuUiMessageBox::Handler CZuUiMessageBox::SetHandler(Handler replacement)
{
    Handler old = std::move(handler());
    handler() = std::move(replacement);
    return old;
}
