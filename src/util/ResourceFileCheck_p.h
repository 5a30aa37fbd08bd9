#pragma once

#include "kvxrefutil_export.h"

#include <QByteArray>

namespace Util {

/// Whether @p bytes are a compiled resource file whose tree Qt's resource system can walk
/// without reading outside the bytes: Qt trusts every offset in such a file, so a damaged or
/// foreign one would make it read wherever the offsets point. Checks the header, every node
/// reachable from the root (its name, its children or its data), that children come after their
/// parent (so the tree has no cycle), and that no entry unpacks to more than @p maxEntryBytes.
KVXREFUTIL_EXPORT bool IsReadableResourceFile(const QByteArray& bytes, qint64 maxEntryBytes);

} // namespace Util
