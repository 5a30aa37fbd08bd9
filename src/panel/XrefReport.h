#pragma once

#include "kvxreftroveui_export.h"

#include "items/RefStatus.h"

#include <QByteArray>
#include <QPixmap>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class CXrefPanelCtrl;
class CXrefReportPrivate;

/// A report of every reference in a panel, for people who keep a drawing set's references on
/// paper or in a spreadsheet. The rows are the tree view's nodes, depth first from the root: a
/// file referenced from two places appears twice, each time at its own nesting level. Every text
/// is the one the panel shows (the list's status, size, date and type cells, the found-at and
/// saved paths), so the report agrees with the screen.
///
/// Two formats: CSV (RFC 4180 quoting, UTF-8 with a byte-order mark so that spreadsheets read
/// non-Latin names right, CRLF line ends, a header row) and one self-contained HTML page (inline
/// style only, thumbnails as data: URIs, nesting by indentation, readable in light and dark
/// colour schemes).
///
/// The report takes its rows when it is constructed; later changes to the panel do not show.
class KVXREFTROVEUI_EXPORT CXrefReport
{
public:
    enum class Format { Csv, Html };

    /// One tree node.
    struct Row
    {
        QString name;
        /// 0 for the host drawing, 1 for its references, 2 for theirs...
        int level = 0;
        QString status;
        RefStatus::RefIcon statusIcon = RefStatus::Blank;
        QString size;
        QString date;
        QString type;
        QString foundAt;
        QString savedPath;
        /// The item's preview picture; null when it has none or thumbnails were not asked for.
        QPixmap thumbnail;
    };

    /// Takes the rows of @p panel's tree now. With @p thumbnails false the items are not asked
    /// for their pictures (which may read files). A panel without a root gives no rows.
    explicit CXrefReport(CXrefPanelCtrl& panel, bool thumbnails = true);
    /// A report of rows the caller made.
    explicit CXrefReport(std::vector<Row> rows);
    ~CXrefReport();
    CXrefReport(const CXrefReport&) = delete;
    CXrefReport& operator=(const CXrefReport&) = delete;

    const std::vector<Row>& Rows() const;

    /// The HTML page's title and heading. Default "External References".
    void SetTitle(const QString& title);
    QString Title() const;
    /// The longer edge of the thumbnails in the HTML page, in pixels (pictures are only ever
    /// made smaller). Default 64; 0 leaves thumbnails out.
    void SetThumbnailEdge(int edge);
    int ThumbnailEdge() const;

    QByteArray ToCsv() const;
    QByteArray ToHtml() const;

    /// Writes the report to @p path in @p format, all or nothing (an earlier file stays as it was
    /// when writing fails). Empty when done, else a sentence saying what went wrong, for the
    /// host to show.
    QString Write(const QString& path, Format format) const;
    /// The same, in the format that @p path's suffix names (see FormatOf).
    QString Write(const QString& path) const;

    /// Html for ".html" and ".htm", Csv for ".csv" (any case); none for anything else.
    static std::optional<Format> FormatOf(const QString& path);

private:
    std::unique_ptr<CXrefReportPrivate> const d;
};
