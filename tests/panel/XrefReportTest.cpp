// The reference report: which rows it takes from the tree, and that CSV and HTML carry every
// text intact whatever characters a reference name holds.

#include "PanelFixture.h"
#include "support/TestXrefItem.h"

#include "items/XrefPanelCtrlItemStatus.h"
#include "panel/XrefReport.h"
#include "services/TroveUIFunctions.h"

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextDocument>

namespace {

using DetailsType = CXrefPanelCtrl::DetailsViewType;
using ViewType = CXrefPanelCtrl::FileReferenceViewType;

/// An item whose preview picture the test chooses.
class ReportItem : public TestXrefItem
{
public:
    using TestXrefItem::TestXrefItem;
    QPixmap picture;

protected:
    QPixmap GetPreview() override { return picture; }
};

// A CSV reader that follows RFC 4180 to the letter, so that anything the writer quotes wrongly
// comes back different.
std::vector<std::vector<QString>> parseCsv(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    std::vector<std::vector<QString>> records;
    std::vector<QString> record;
    QString cell;
    bool quoted = false;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < text.size() && text[i + 1] == QLatin1Char('"')) {
                    cell += c;
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                cell += c;
            }
        } else if (c == QLatin1Char('"') && cell.isEmpty()) {
            quoted = true;
        } else if (c == QLatin1Char(',')) {
            record.push_back(cell);
            cell.clear();
        } else if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == '\n') {
            record.push_back(cell);
            cell.clear();
            records.push_back(record);
            record.clear();
            ++i;
        } else {
            cell += c;
        }
    }
    EXPECT_FALSE(quoted) << "unterminated quoted cell";
    EXPECT_TRUE(cell.isEmpty() && record.empty()) << "last record lacks its CRLF";
    return records;
}

const QString kHostile[] = {
    QStringLiteral("<script>alert('x')</script>"),
    QStringLiteral("Say \"hi\", then, \"bye\""),
    QStringLiteral("two\nlines\r\nand more"),
    QStringLiteral(" padded "),
    QStringLiteral("平面図 – Ωμέγα – مخطط"),
    QStringLiteral("&amp; <b>not bold</b> %1 %2"),
    QString(5000, QLatin1Char('L')) + QStringLiteral(",end"),
};

class XrefReportTest : public PanelFixture
{
protected:
    void SetUp() override
    {
        panel = Make(480, 600, ViewType::TreeView, DetailsType::Details);
        panel->BeginUpdate();
        root = new ReportItem(*panel, true);
        panel->InsertRootItem(*root);
        root->SetText(L"Site");
        panel->EndUpdate();
    }
    void TearDown() override
    {
        panel->DeleteAllItems();
        panel.reset();
    }

    ReportItem* add(const QString& name, CXrefPanelCtrlItem& parent,
                    const CXrefPanelCtrlItem* sharedWith = nullptr)
    {
        auto* item = new ReportItem(*panel);
        panel->InsertItem(*item, parent, sharedWith);
        item->SetText(name.toStdWString());
        if (!sharedWith) {
            item->SetSavedPath(
                (QStringLiteral("./") + name + QStringLiteral(".dwg")).toStdWString());
            item->SetType(L"Attach");
        }
        return item;
    }

    std::unique_ptr<TestPanel> panel;
    ReportItem* root = nullptr;
};

TEST_F(XrefReportTest, rowsFollowTheTreeDepthFirstOncePerPlaceWithTheirLevels)
{
    // Site
    //   Roads             (also referenced from Plan)
    //   Plan
    //     Grid
    //       Roads (shared row)
    //   Survey
    ReportItem* roads = add(QStringLiteral("Roads"), *root);
    ReportItem* plan = add(QStringLiteral("Plan"), *root);
    ReportItem* grid = add(QStringLiteral("Grid"), *plan);
    add(QStringLiteral("Roads"), *grid, roads);
    add(QStringLiteral("Survey"), *root);
    roads->SetSize(2048);
    roads->SetReferenceStatus(RefStatus::Unresolved, Trove::FileDataStatus::Code2);
    roads->SetFoundAt(L"/data/roads.dwg");
    roads->SetDate(Util::DateTime(2023, 4, 5, 6, 7, 8));

    const CXrefReport report(*panel, false);
    std::vector<std::pair<QString, int>> seen;
    for (const CXrefReport::Row& row : report.Rows())
        seen.emplace_back(row.name, row.level);
    const std::vector<std::pair<QString, int>> expected = {
        {"Site", 0}, {"Roads", 1}, {"Plan", 1}, {"Grid", 2}, {"Roads", 3}, {"Survey", 1}};
    EXPECT_EQ(seen, expected);

    // Both places of the shared file carry the texts of its one list row, as the list shows.
    for (const std::size_t at : {std::size_t(1), std::size_t(4)}) {
        const CXrefReport::Row& row = report.Rows()[at];
        EXPECT_EQ(row.status, CXrefPanelCtrlItemStatus::ToString(Trove::FileDataStatus::Code2));
        EXPECT_EQ(row.size.toStdWString(), roads->GetSizeDisplayText());
        EXPECT_FALSE(row.size.isEmpty());
        EXPECT_EQ(row.date.toStdWString(), roads->GetDateDisplayText());
        EXPECT_EQ(row.savedPath, QStringLiteral("./Roads.dwg"));
        EXPECT_EQ(row.type, QStringLiteral("Attach"));
    }
    EXPECT_EQ(report.Rows()[1].foundAt, QStringLiteral("/data/roads.dwg"));
    // Found-at and the status badge belong to the item, not the row: the second place has not
    // been given them.
    EXPECT_TRUE(report.Rows()[4].foundAt.isEmpty());
    EXPECT_EQ(report.Rows()[1].statusIcon, RefStatus::Unresolved);
    EXPECT_EQ(report.Rows()[4].statusIcon, RefStatus::Blank);
}

TEST_F(XrefReportTest, pendingRelativeSavedPathLeavesItsMarkerOut)
{
    ReportItem* item = add(QStringLiteral("Grid"), *root);
    item->pendingRelativePath = true;
    item->SetSavedPath(L"../grid.dwg");
    const CXrefReport report(*panel, false);
    EXPECT_EQ(report.Rows().at(1).savedPath, QStringLiteral("../grid.dwg"));
}

TEST_F(XrefReportTest, deepChainsDoNotExhaustTheStack)
{
    CXrefPanelCtrlItem* parent = root;
    panel->BeginUpdate();
    for (int i = 0; i < 3000; ++i)
        parent = add(QStringLiteral("L%1").arg(i), *parent);
    panel->EndUpdate();
    const CXrefReport report(*panel, false);
    ASSERT_EQ(report.Rows().size(), 3001u);
    EXPECT_EQ(report.Rows().back().level, 3000);
    // Indentation stops growing at some depth, so the deepest row stays on the page.
    const QByteArray html = report.ToHtml();
    EXPECT_TRUE(html.contains("data-level=\"3000\""));
    EXPECT_FALSE(html.contains("margin-left:4500em"));
}

TEST_F(XrefReportTest, csvQuotesOnlyWhereNeededAndReadsBackEveryName)
{
    for (const QString& name : kHostile)
        add(name, *root);
    const QByteArray csv = CXrefReport(*panel, false).ToCsv();
    ASSERT_TRUE(csv.startsWith("\xEF\xBB\xBF")) << "spreadsheets need the mark to read UTF-8";
    EXPECT_TRUE(
        csv.mid(3).startsWith("Name,Level,Status,Size,Date,Type,Found at,Saved path\r\nSite,0,"));

    const auto records = parseCsv(csv.mid(3));
    ASSERT_EQ(records.size(), std::size(kHostile) + 2);
    for (const auto& record : records)
        ASSERT_EQ(record.size(), 8u);
    for (std::size_t i = 0; i < std::size(kHostile); ++i) {
        const auto& record = records[i + 2];
        EXPECT_EQ(record[0], kHostile[i]);
        EXPECT_EQ(record[1], QStringLiteral("1"));
        EXPECT_EQ(record[7], QStringLiteral("./") + kHostile[i] + QStringLiteral(".dwg"));
    }
    // A plain cell is not quoted.
    EXPECT_TRUE(csv.contains("\r\n<script>alert('x')</script>,1,"));
}

TEST_F(XrefReportTest, htmlEscapesEveryTextAndShowsItIntact)
{
    for (const QString& name : kHostile)
        add(name, *root);
    CXrefReport report(*panel, false);
    report.SetTitle(QStringLiteral("Site </title><script>x</script>"));
    const QByteArray html = report.ToHtml();

    // The only markup is the report's own.
    EXPECT_FALSE(html.contains("<script")) << html.left(2000).toStdString();
    EXPECT_FALSE(html.contains("<b>not"));
    EXPECT_TRUE(html.contains("&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;"));
    EXPECT_TRUE(html.contains("Say &quot;hi&quot;, then"));
    EXPECT_TRUE(html.contains("&amp;amp; &lt;b&gt;not bold&lt;/b&gt; %1 %2"));
    EXPECT_TRUE(html.contains("two\nlines&#xd;\nand more"));
    EXPECT_TRUE(html.contains(QStringLiteral("平面図 – Ωμέγα – مخطط").toUtf8()));
    EXPECT_EQ(html.count(QString(5000, QLatin1Char('L')).toLatin1()), 2); // name and saved path

    // Read as a browser would, the page shows the texts as they are.
    QTextDocument document;
    document.setHtml(QString::fromUtf8(html));
    const QString shown = document.toPlainText();
    EXPECT_TRUE(shown.contains(QStringLiteral("<script>alert('x')</script>")));
    EXPECT_TRUE(shown.contains(QStringLiteral("&amp; <b>not bold</b> %1 %2")));
    EXPECT_TRUE(shown.contains(QStringLiteral("Site </title><script>x</script>")));
    EXPECT_TRUE(shown.contains(QStringLiteral("平面図 – Ωμέγα – مخطط")));
}

TEST_F(XrefReportTest, htmlNeedsNothingFromOutsideAndIndentsByLevel)
{
    ReportItem* plan = add(QStringLiteral("Plan"), *root);
    add(QStringLiteral("Grid"), *plan);
    const QString html = QString::fromUtf8(CXrefReport(*panel, false).ToHtml());
    EXPECT_FALSE(html.contains(QStringLiteral("<link")));
    EXPECT_FALSE(html.contains(QStringLiteral("url(")));
    EXPECT_FALSE(html.contains(QStringLiteral("http")));
    EXPECT_FALSE(html.contains(QStringLiteral("<script")));
    EXPECT_TRUE(html.contains(QStringLiteral("prefers-color-scheme: dark")));

    const QRegularExpression indent(QStringLiteral("margin-left:([0-9.]+)em\"><span>([A-Za-z]+)<"));
    std::vector<std::pair<QString, double>> rows;
    for (auto it = indent.globalMatch(html); it.hasNext();) {
        const auto match = it.next();
        rows.emplace_back(match.captured(2), match.captured(1).toDouble());
    }
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].first, QStringLiteral("Site"));
    EXPECT_LT(rows[0].second, rows[1].second);
    EXPECT_LT(rows[1].second, rows[2].second);
}

TEST_F(XrefReportTest, thumbnailsAreSmallPngsEncodedOncePerPicture)
{
    QImage big(400, 200, QImage::Format_RGB32);
    big.fill(Qt::darkCyan);
    ReportItem* grid = add(QStringLiteral("Grid"), *root);
    grid->picture = QPixmap::fromImage(big);
    ReportItem* plan = add(QStringLiteral("Plan"), *root);
    plan->picture = grid->picture; // the same picture, as two items of one file have
    add(QStringLiteral("Survey"), *root);

    CXrefReport report(*panel);
    report.SetThumbnailEdge(48);
    const QString html = QString::fromUtf8(report.ToHtml());
    const QRegularExpression image(
        QStringLiteral("<img src=\"data:image/png;base64,([A-Za-z0-9+/=]+)\" width=\"(\\d+)\" "
                       "height=\"(\\d+)\""));
    std::vector<QString> payloads;
    for (auto it = image.globalMatch(html); it.hasNext();) {
        const auto match = it.next();
        payloads.push_back(match.captured(1));
        EXPECT_EQ(match.captured(2), QStringLiteral("48"));
        EXPECT_EQ(match.captured(3), QStringLiteral("24"));
    }
    ASSERT_EQ(payloads.size(), 2u);
    EXPECT_EQ(payloads[0], payloads[1]);
    const QImage decoded = QImage::fromData(QByteArray::fromBase64(payloads[0].toLatin1()), "PNG");
    EXPECT_EQ(decoded.size(), QSize(48, 24));
    EXPECT_EQ(decoded.pixelColor(10, 10), QColor(Qt::darkCyan));
    // The item without a picture keeps its name in line with the others.
    EXPECT_TRUE(html.contains(QStringLiteral("<span class=\"noimg\" style=\"width:48px\"></span>"
                                             "<span>Survey</span>")));

    report.SetThumbnailEdge(0);
    EXPECT_FALSE(report.ToHtml().contains("<img"));
}

TEST(XrefReportFileTest, writesByFormatAndSaysWhyItCannot)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    CXrefReport report(std::vector<CXrefReport::Row>{{}});

    EXPECT_EQ(CXrefReport::FormatOf(QStringLiteral("a.HTM")), CXrefReport::Format::Html);
    EXPECT_EQ(CXrefReport::FormatOf(QStringLiteral("a.Csv")), CXrefReport::Format::Csv);
    EXPECT_FALSE(CXrefReport::FormatOf(QStringLiteral("a.txt")));

    const QString html = dir.filePath(QStringLiteral("r.html"));
    EXPECT_EQ(report.Write(html), QString());
    QFile written(html);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().startsWith("<!DOCTYPE html>"));

    EXPECT_FALSE(report.Write(dir.filePath(QStringLiteral("r.txt"))).isEmpty());
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("r.txt"))));
    // A folder that cannot be made: the parent is a file.
    const QString blocked = html + QStringLiteral("/r.csv");
    const QString fault = report.Write(blocked);
    EXPECT_TRUE(fault.contains(blocked)) << fault.toStdString();
}

} // namespace
