#include "panel/KvXrefTroveUI.h"

#include "util/KvXrefUtil.h"

extern "C" int kvXrefTroveUIInitialize()
{
    return kvXrefUtilCrtInitialize();
}

extern "C" int kvXrefTroveUITerminate()
{
    return kvXrefUtilCrtTerminate();
}
