#pragma once

#include "DrawingFormat.h"
#include "FileStatus.h"

#include <QString>

#include <vector>

struct Occurrence;

/// Every occurrence of an open drawing's references, nested drawings followed.
struct LoadedReferences
{
    std::vector<Occurrence> occurrences;
    /// Why some references were not followed; empty when all were.
    QString warning;
};

/// Lists the open drawing at @p hostPath (whose table is @p host) and, depth first, every
/// reference it makes, reading each nested drawing once however often it is referenced.
/// Overlays in nested drawings are left out, as they are not carried into the open drawing.
/// A drawing already open further up the chain is Circular and not followed; once
/// @p maxOccurrences are listed or waiting, drawings are NotLoaded and not followed either.
/// Nothing is recursive, so a chain of any depth is fine.
LoadedReferences LoadReferences(const QString& hostPath, const DrawingContents& host,
                                const FileLocator& locator, int maxOccurrences);
