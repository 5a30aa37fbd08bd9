#include "util/KvXrefUtil.h"

#include <atomic>

namespace {
std::atomic<int> g_initializeCount{0};
}

extern "C" int kvXrefUtilCrtInitialize()
{
    ++g_initializeCount;
    return 1;
}

extern "C" int kvXrefUtilCrtTerminate()
{
    int count = g_initializeCount.load();
    while (count > 0) {
        if (g_initializeCount.compare_exchange_weak(count, count - 1))
            return 1;
    }
    return 0;
}

namespace Util {
int CrtInitializeCount()
{
    return g_initializeCount.load();
}
} // namespace Util
