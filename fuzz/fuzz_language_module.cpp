// Language modules are resource files that hosts install beside the library and load by name.
// A damaged or foreign file must be refused or read safely: its strings, menus and icons looked
// up, and the module unloaded again, without a crash, a hang or an unbounded allocation.

#include "util/ResourceModule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

QString* g_path = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // In memory where there is such a file system: every run writes a file.
    static QTemporaryDir scratch(QDir(QStringLiteral("/dev/shm")).exists()
                                     ? QStringLiteral("/dev/shm/kvx-fuzz-XXXXXX")
                                     : QDir::tempPath() + QStringLiteral("/kvx-fuzz-XXXXXX"));
    g_path = new QString(scratch.filePath(QStringLiteral("module.rcc")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    {
        QFile file(*g_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    const std::unique_ptr<Util::ResourceModule> module = Util::ResourceModule::LoadRcc(*g_path);
    if (!module)
        return 0;
    for (unsigned id : module->StringIds())
        (void)module->String(id);
    for (const char* name : {"menus/2080.json", "menus/1080.json", "icons/IDI_TYPE_DWG.svg",
                             "bitmaps/REFRESH_BTN.svg", "strings.json"})
        (void)module->Data(QString::fromLatin1(name));
    return 0;
}
