#pragma once

#include "kvuiframework_export.h"

#include <QString>

#include <functional>

/// The application's modal message box, titled with the application's title. Tests replace the
/// way it is shown, so that no test waits in a modal loop.
class KVUIFRAMEWORK_EXPORT CZuUiMessageBox
{
public:
    /// Button sets and icons, combinable as in classic message boxes.
    enum Type : unsigned {
        Ok = 0x0,
        OkCancel = 0x1,
        AbortRetryIgnore = 0x2,
        YesNoCancel = 0x3,
        YesNo = 0x4,
        RetryCancel = 0x5,
        IconError = 0x10,
        IconQuestion = 0x20,
        IconWarning = 0x30,
        IconInformation = 0x40,
        DefButton2 = 0x100,
        DefButton3 = 0x200,
    };
    /// Results.
    enum Result : int {
        IdOk = 1,
        IdCancel = 2,
        IdAbort = 3,
        IdRetry = 4,
        IdIgnore = 5,
        IdYes = 6,
        IdNo = 7
    };

    /// Shows @p text with the application's title as caption; returns the button pressed.
    static int Show(const QString& text, unsigned type, unsigned helpId);

    /// The caption message boxes use: the application's display name.
    static QString ApplicationTitle();
    static void SetApplicationTitle(const QString& title);

    using Handler = std::function<int(const QString& text, const QString& caption, unsigned type,
                                      unsigned helpId)>;
    /// Replaces how message boxes are shown; an empty handler restores the default. Returns the
    /// old handler.
    static Handler SetHandler(Handler handler);
};
