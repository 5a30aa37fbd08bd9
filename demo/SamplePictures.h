#pragma once

// The pictures of the sample project: drawing previews, photos and the survey's PDF page, all
// drawn here so that the demo needs nothing from outside.

#include <QImage>
#include <QString>

namespace SamplePictures {

/// Preview of the host drawing: the quay, the sheds and the survey lines.
QImage SitePlan();
QImage StructuralGrid();
/// The grid with its columns.
QImage Columns();
/// Elevation of a four-storey building.
QImage Building();
/// Rooms and doors of one storey.
QImage FloorPlan();
QImage Furniture();

/// An aerial photo of the site, noisy like a real one.
QImage AerialPhoto(int width, int height, quint32 seed);
QImage QuayPhoto();

/// Writes a one-page PDF of the quay outline to @p path.
bool WriteSurveyPdf(const QString& path);

} // namespace SamplePictures
