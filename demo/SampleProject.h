#pragma once

#include "items/FileDataStatus.h"
#include "items/RefStatus.h"

#include <QString>

#include <vector>

/// One reference of the sample project: what the host would know about it after loading the
/// drawing.
struct SampleReference
{
    QString name;
    /// The path as the drawing stores it (relative paths start with ".").
    QString savedPath;
    /// Where the file was found; empty when it was not.
    QString foundAt;
    /// The named type icon ("" for the class's default drawing icon).
    QString typeIcon;
    /// "Attach" or "Overlay" for drawings, "Attach" for the rest.
    QString type;
    RefStatus::RefIcon status = RefStatus::Blank;
    Trove::FileDataStatus::Value code = Trove::FileDataStatus::Code1;
    /// Index of the parent reference; -1 for a reference of the host drawing.
    int parent = -1;
    /// Index of an earlier reference to the same file (one list row for both); -1 for none.
    int sameFileAs = -1;
    /// Repository state image (0 none).
    unsigned troveState = 0;
};

/// A small harbour project written to a folder: a host drawing whose references are drawings
/// with previews, raster images, a PDF underlay, a point cloud, a coordination model, a data link
/// and a few references that cannot be found. Every file is made here, so the demo needs nothing
/// from outside.
class SampleProject
{
public:
    /// Writes the files under @p folder (made when missing). False when a file cannot be written.
    bool Write(const QString& folder);

    const QString& HostDrawing() const { return m_hostDrawing; }
    const std::vector<SampleReference>& References() const { return m_references; }

private:
    QString m_hostDrawing;
    std::vector<SampleReference> m_references;
};
