// Language modules bring their own string tables. Whatever a table holds, loading it must not
// crash or hang, and the module must answer consistently: the ids it lists are the ones it has,
// in ascending order, and a text it lacks comes from the module behind it.

#include "util/ResourceModule.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

// Scratch folders in memory where there is such a file system: every run writes a table.
QString scratchTemplate()
{
    const QString folder =
        QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
    return folder + QStringLiteral("/kvx-fuzz-XXXXXX");
}

struct Scratch
{
    Scratch()
    {
        QFile table(fallbackDir.filePath(QStringLiteral("strings.json")));
        if (table.open(QIODevice::WriteOnly))
            table.write(R"({"1": "one", "2": "two", "4294967295": "last"})");
        table.close();
        fallback = std::make_unique<Util::ResourceModule>(fallbackDir.path());
    }

    QTemporaryDir language{scratchTemplate()};
    QTemporaryDir fallbackDir{scratchTemplate()};
    std::unique_ptr<Util::ResourceModule> fallback;
};

Scratch* g_scratch = nullptr;

void check(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    g_scratch = new Scratch;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    {
        QFile table(g_scratch->language.filePath(QStringLiteral("strings.json")));
        if (!table.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        table.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    const Util::ResourceModule& fallback = *g_scratch->fallback;
    const Util::ResourceModule module(g_scratch->language.path(), QStringLiteral("fuzz"),
                                      &fallback);

    const QList<unsigned> ids = module.StringIds();
    for (qsizetype i = 1; i < ids.size(); ++i)
        check(ids[i - 1] < ids[i]);
    for (unsigned id : ids)
        check(module.HasString(id));
    for (unsigned id : {1u, 2u, 4294967295u}) {
        check(module.HasString(id));
        if (!ids.contains(id))
            check(module.String(id) == fallback.String(id));
    }
    if (!ids.contains(3u))
        check(module.String(3).isEmpty() && !module.HasString(3));
    const std::wstring text = Util::LoadStrW(&module, ids.isEmpty() ? 0u : ids.front());
    (void)text;
    return 0;
}
