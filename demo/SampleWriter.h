#pragma once

#include <QString>

/// Writes the sample project into @p folder (made when missing): the host drawing
/// "Harbour site.dwg" and a dozen references - drawings with previews (one referenced again
/// from another drawing, one three levels down), a PNG and a JPEG photo, a PDF survey, DWF,
/// DGN, point-cloud, coordination-model and data-link files, a reference whose file is missing
/// and an unloaded one. Files already there are replaced.
/// The host drawing's path, or an empty text with the reason in @p error.
QString WriteSampleProject(const QString& folder, QString* error = nullptr);
