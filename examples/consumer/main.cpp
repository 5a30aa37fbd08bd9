// Loads the library the way a host does and checks that its resources and services answer.

#include <panel/KvXrefTroveUI.h>
#include <resources/TroveResources.h>
#include <services/TroveUIFunctions.h>
#include <services/XrefMessageBox.h>

#include <QApplication>

#include <iostream>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (kvXrefTroveUIInitialize() != 1)
        return 1;
    CXrefMessageBox strip;
    strip.SetMessage(TroveUI::ResString(1038));
    const std::wstring size = TroveUI::FormatByteSize(2400016);
    const bool ok = strip.Message() == QStringLiteral("File References") && size == L"2.28 MB";
    std::wcout << L"consumer: " << strip.Message().toStdWString() << L", " << size
               << (ok ? L" - ok" : L" - FAILED") << std::endl;
    kvXrefTroveUITerminate();
    return ok ? 0 : 1;
}
