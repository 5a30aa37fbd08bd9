// The main of every test program: one QApplication for the whole program, on the offscreen
// platform unless the caller chose another.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KvXrefTroveUI tests"));
    QApplication::setApplicationDisplayName(QStringLiteral("KvXrefTroveUI tests"));
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
