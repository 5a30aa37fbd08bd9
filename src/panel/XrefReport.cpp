#include "panel/XrefReport.h"

#include "host/KvNameDescriptionToolTipInfo.h"
#include "items/ItemToolTip_p.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl.h"

#include <QBuffer>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>

#include <algorithm>
#include <utility>

namespace {

const char* const kColumns[] = {"Name", "Level", "Status",   "Size",
                                "Date", "Type",  "Found at", "Saved path"};

// Deeper levels still say their level in the row, but indenting further would push the text off
// any page.
constexpr int kMaxIndentLevel = 32;

QString text(const boost::optional<std::wstring>& value)
{
    return value ? QString::fromStdWString(*value) : QString();
}

void appendCsvCell(QByteArray& out, const QString& cell)
{
    // Quoting only where a reader needs it keeps the file easy on the eye; surrounding spaces
    // are quoted too because some readers trim them otherwise.
    const bool quote = cell.contains(QLatin1Char(',')) || cell.contains(QLatin1Char('"')) ||
                       cell.contains(QLatin1Char('\n')) || cell.contains(QLatin1Char('\r')) ||
                       (!cell.isEmpty() && (cell.front().isSpace() || cell.back().isSpace()));
    if (!quote) {
        out += cell.toUtf8();
        return;
    }
    out += '"';
    out += QString(cell).replace(QLatin1Char('"'), QLatin1String("\"\"")).toUtf8();
    out += '"';
}

// Text for an HTML element's content or a quoted attribute value. Characters that HTML does not
// allow in a document (NUL, the other C0 and C1 controls) become numeric references or the
// replacement character, so a hostile name can neither break the markup nor the page.
QString escapeHtml(const QString& text)
{
    QString out;
    out.reserve(text.size() + text.size() / 8);
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '&':
            out += QLatin1String("&amp;");
            break;
        case '<':
            out += QLatin1String("&lt;");
            break;
        case '>':
            out += QLatin1String("&gt;");
            break;
        case '"':
            out += QLatin1String("&quot;");
            break;
        case '\'':
            out += QLatin1String("&#39;");
            break;
        case 0:
            out += QChar(QChar::ReplacementCharacter);
            break;
        default:
            if ((c.unicode() < 0x20 && c != QLatin1Char('\n') && c != QLatin1Char('\t')) ||
                (c.unicode() >= 0x7f && c.unicode() < 0xa0))
                out += QStringLiteral("&#x%1;").arg(c.unicode(), 0, 16);
            else
                out += c;
        }
    }
    return out;
}

// The status class colours the status cell; only the states a drafter has to act on stand out.
const char* statusClass(RefStatus::RefIcon icon)
{
    switch (icon) {
    case RefStatus::Unloaded:
        return "unloaded";
    case RefStatus::NeedsReloading:
        return "reload";
    case RefStatus::Unresolved:
        return "unresolved";
    default:
        return "ok";
    }
}

const char kStyle[] = R"(
:root { color-scheme: light dark; --fg: #1d232b; --bg: #ffffff; --muted: #5b6573;
  --line: #d5dae1; --head: #eef1f5; --bad: #b3261e; --warn: #8a5a00; --off: #6b7280; }
@media (prefers-color-scheme: dark) {
  :root { --fg: #e4e8ee; --bg: #1b1f24; --muted: #9aa4b2; --line: #353c45; --head: #262c33;
    --bad: #ff8a80; --warn: #ffcc66; --off: #9ca3af; } }
body { font: 14px/1.4 system-ui, sans-serif; color: var(--fg); background: var(--bg);
  margin: 1.5em; }
h1 { font-size: 1.4em; margin: 0 0 .2em; }
p.summary { color: var(--muted); margin: 0 0 1em; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: middle; padding: .3em .6em;
  border-bottom: 1px solid var(--line); }
th { background: var(--head); position: sticky; top: 0; }
td.name { white-space: pre-wrap; overflow-wrap: anywhere; min-width: 12em; }
td.path { overflow-wrap: anywhere; font-family: ui-monospace, monospace; font-size: .92em; }
td.size { text-align: right; white-space: nowrap; }
td.date { white-space: nowrap; }
.ref { display: flex; align-items: center; gap: .5em; }
.ref img { flex: none; border: 1px solid var(--line); background: #fff; }
.ref .noimg { flex: none; }
tr.unresolved td.status { color: var(--bad); font-weight: 600; }
tr.reload td.status { color: var(--warn); font-weight: 600; }
tr.unloaded td.status { color: var(--off); }
tr.level0 td { font-weight: 600; }
)";

} // namespace

class CXrefReportPrivate
{
public:
    std::vector<CXrefReport::Row> rows;
    QString title = QStringLiteral("External References");
    int thumbnailEdge = 64;

    QString thumbnailUri(const QPixmap& picture, QHash<qint64, QString>& done) const;
};

// Shared references and items that show the same file give the same picture: each is encoded
// once per report.
QString CXrefReportPrivate::thumbnailUri(const QPixmap& picture, QHash<qint64, QString>& done) const
{
    if (picture.isNull() || thumbnailEdge <= 0)
        return {};
    const auto found = done.constFind(picture.cacheKey());
    if (found != done.constEnd())
        return *found;
    QImage image = picture.toImage();
    if (image.width() > thumbnailEdge || image.height() > thumbnailEdge)
        image = image.scaled(thumbnailEdge, thumbnailEdge, Qt::KeepAspectRatio,
                             Qt::SmoothTransformation);
    image.setDevicePixelRatio(1.0);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QString uri;
    if (image.save(&buffer, "PNG"))
        uri = QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64());
    done.insert(picture.cacheKey(), uri);
    return uri;
}

CXrefReport::CXrefReport(CXrefPanelCtrl& panel, bool thumbnails)
    : d(std::make_unique<CXrefReportPrivate>())
{
    CXrefPanelCtrlItem* root = panel.GetRootItem();
    if (!root)
        return;
    // An explicit stack: reference chains can be far deeper than the call stack is safe for.
    std::vector<std::pair<CXrefPanelCtrlItem*, int>> pending{{root, 0}};
    while (!pending.empty()) {
        const auto [item, level] = pending.back();
        pending.pop_back();
        Row row;
        row.name = QString::fromStdWString(item->GetText());
        row.level = level;
        row.status = text(item->GetProperty(Trove::XrefProperties::Status));
        row.statusIcon = item->GetReferenceStatusIcon();
        row.size = QString::fromStdWString(item->GetSizeDisplayText());
        row.date = QString::fromStdWString(item->GetDateDisplayText());
        row.type = QString::fromStdWString(item->GetType());
        row.foundAt = QString::fromStdWString(item->GetFoundAt());
        row.savedPath = QString::fromStdWString(item->GetSavedPath());
        if (thumbnails) {
            // The picture the item's own tool tip shows, so a host class that supplies its own
            // thumbnails gets them in the report too.
            if (const auto tip = ItemToolTip::Create(*item))
                row.thumbnail = tip->GetPreviewBitmap();
        }
        d->rows.push_back(std::move(row));
        const std::vector<CXrefPanelCtrlItem*> children = panel.GetChildren(*item);
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.emplace_back(*child, level + 1);
    }
}

CXrefReport::CXrefReport(std::vector<Row> rows) : d(std::make_unique<CXrefReportPrivate>())
{
    d->rows = std::move(rows);
}

CXrefReport::~CXrefReport() = default;

const std::vector<CXrefReport::Row>& CXrefReport::Rows() const
{
    return d->rows;
}

void CXrefReport::SetTitle(const QString& title)
{
    d->title = title;
}

QString CXrefReport::Title() const
{
    return d->title;
}

void CXrefReport::SetThumbnailEdge(int edge)
{
    d->thumbnailEdge = std::max(0, edge);
}

int CXrefReport::ThumbnailEdge() const
{
    return d->thumbnailEdge;
}

QByteArray CXrefReport::ToCsv() const
{
    QByteArray out("\xEF\xBB\xBF");
    for (std::size_t i = 0; i < std::size(kColumns); ++i) {
        if (i)
            out += ',';
        out += kColumns[i];
    }
    out += "\r\n";
    for (const Row& row : d->rows) {
        const QString cells[] = {row.name,    QString::number(row.level),
                                 row.status,  row.size,
                                 row.date,    row.type,
                                 row.foundAt, row.savedPath};
        for (std::size_t i = 0; i < std::size(cells); ++i) {
            if (i)
                out += ',';
            appendCsvCell(out, cells[i]);
        }
        out += "\r\n";
    }
    return out;
}

QByteArray CXrefReport::ToHtml() const
{
    const QString title = escapeHtml(d->title);
    QString html;
    html += QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                           "<meta name=\"viewport\" content=\"width=device-width, "
                           "initial-scale=1\">\n<title>%1</title>\n<style>")
                .arg(title);
    html += QLatin1String(kStyle);
    html += QStringLiteral("</style>\n</head>\n<body>\n<h1>%1</h1>\n").arg(title);
    const int references = std::max(0, int(d->rows.size()) - 1);
    const int problems = int(std::count_if(d->rows.begin(), d->rows.end(), [](const Row& row) {
        return row.statusIcon == RefStatus::Unresolved ||
               row.statusIcon == RefStatus::NeedsReloading;
    }));
    html += QStringLiteral("<p class=\"summary\">%1 reference%2 in the tree")
                .arg(references)
                .arg(references == 1 ? QString() : QStringLiteral("s"));
    if (problems > 0)
        html += QStringLiteral(", %1 not found or out of date").arg(problems);
    html += QLatin1String(".</p>\n<table>\n<thead><tr>");
    for (const char* column : kColumns)
        if (qstrcmp(column, "Level") != 0)
            html += QStringLiteral("<th>%1</th>").arg(QLatin1String(column));
    html += QLatin1String("</tr></thead>\n<tbody>\n");

    QHash<qint64, QString> thumbnails;
    const int edge = d->thumbnailEdge;
    const bool anyThumbnail =
        edge > 0 && std::any_of(d->rows.begin(), d->rows.end(),
                                [](const Row& row) { return !row.thumbnail.isNull(); });
    for (const Row& row : d->rows) {
        const int level = std::max(0, row.level);
        html += QStringLiteral("<tr class=\"%1 level%2\" data-level=\"%3\">")
                    .arg(QLatin1String(statusClass(row.statusIcon)))
                    .arg(std::min(level, 1))
                    .arg(level);
        html += QStringLiteral("<td class=\"name\"><div class=\"ref\" style=\"margin-left:%1em\">")
                    .arg(1.5 * std::min(level, kMaxIndentLevel));
        const QString uri = d->thumbnailUri(row.thumbnail, thumbnails);
        if (!uri.isEmpty()) {
            QSize size = row.thumbnail.size();
            size.scale(std::min(edge, size.width()), std::min(edge, size.height()),
                       Qt::KeepAspectRatio);
            html += QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%3\" alt=\"\">")
                        .arg(uri)
                        .arg(size.width())
                        .arg(size.height());
        } else if (anyThumbnail) {
            // Keeps names lined up whether or not their reference has a picture.
            html += QStringLiteral("<span class=\"noimg\" style=\"width:%1px\"></span>").arg(edge);
        }
        html += QStringLiteral("<span>%1</span></div></td>").arg(escapeHtml(row.name));
        html += QStringLiteral("<td class=\"status\">%1</td><td class=\"size\">%2</td>"
                               "<td class=\"date\">%3</td><td class=\"type\">%4</td>"
                               "<td class=\"path\">%5</td><td class=\"path\">%6</td></tr>\n")
                    .arg(escapeHtml(row.status), escapeHtml(row.size), escapeHtml(row.date),
                         escapeHtml(row.type), escapeHtml(row.foundAt), escapeHtml(row.savedPath));
    }
    html += QLatin1String("</tbody>\n</table>\n</body>\n</html>\n");
    return html.toUtf8();
}

QString CXrefReport::Write(const QString& path, Format format) const
{
    const QByteArray bytes = format == Format::Html ? ToHtml() : ToCsv();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("Cannot write the report to \"%1\": %2")
            .arg(path, file.errorString());
    if (file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("Cannot write the report to \"%1\": %2")
            .arg(path, file.errorString());
    return {};
}

QString CXrefReport::Write(const QString& path) const
{
    const std::optional<Format> format = FormatOf(path);
    if (!format)
        return QStringLiteral("A report is written as .csv or .html; \"%1\" is neither.")
            .arg(QFileInfo(path).fileName());
    return Write(path, *format);
}

std::optional<CXrefReport::Format> CXrefReport::FormatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("html") || suffix == QLatin1String("htm"))
        return Format::Html;
    if (suffix == QLatin1String("csv"))
        return Format::Csv;
    return std::nullopt;
}
