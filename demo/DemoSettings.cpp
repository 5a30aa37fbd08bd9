#include "DemoSettings.h"

#include "panel/XrefPanelCtrl.h"
#include "views/TroveListCtrl.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>

namespace {

const QString kRoot = QStringLiteral("XrefDemoProfile");
const QString kPanel = QStringLiteral("Panel");
// A profile is a few hundred bytes; a huge file is not ours and is not read whole.
constexpr qint64 kMaxProfileBytes = 1024 * 1024;
// Widths beyond this come from a damaged profile, not from a screen.
constexpr int kMaxDipWidth = 10000;
constexpr int kMaxColumns = 64;

std::vector<int> parseWidths(const QString& text)
{
    std::vector<int> widths;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (int(widths.size()) == kMaxColumns)
            break;
        bool ok = false;
        const int width = part.trimmed().toInt(&ok);
        // Unreadable entries keep their place so that later columns keep theirs; a negative
        // width is what the panel reads as "the default".
        widths.push_back(ok && width <= kMaxDipWidth ? width : -1);
    }
    return widths;
}

QString joinWidths(const std::vector<int>& widths)
{
    QStringList parts;
    for (const int width : widths)
        parts << QString::number(width);
    return parts.join(QLatin1Char(','));
}

QDomElement child(const QDomElement& parent, const QString& name)
{
    return parent.firstChildElement(name);
}

} // namespace

QString DemoSettings::ProfilePath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation))
        .filePath(QStringLiteral("profile.xml"));
}

bool DemoSettings::Load(const QString& path)
{
    QFile file(path.isEmpty() ? ProfilePath() : path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxProfileBytes)
        return false;
    QDomDocument document;
    if (!document.setContent(file.readAll()))
        return false;
    const QDomElement root = document.documentElement();
    if (root.tagName() != kRoot)
        return false;

    const QDomElement panel = child(root, kPanel);
    if (!panel.isNull()) {
        m_panelXml = QDomDocument();
        m_panelXml.appendChild(m_panelXml.importNode(panel, true));
        referenceView = std::clamp(panel.attribute(QStringLiteral("referenceView")).toInt(), 0, 1);
        detailsView = std::clamp(panel.attribute(QStringLiteral("detailsView")).toInt(), 0, 1);
        columnDipWidths =
            parseWidths(child(panel, QStringLiteral("Columns")).attribute(QStringLiteral("dip")));
        detailColumnDipWidths = parseWidths(
            child(panel, QStringLiteral("DetailColumns")).attribute(QStringLiteral("dip")));
        const QDomElement sort = child(panel, QStringLiteral("Sort"));
        if (!sort.isNull()) {
            bool ok = false;
            const int column = sort.attribute(QStringLiteral("column")).toInt(&ok);
            sortColumn = ok && column >= -1 && column < kMaxColumns ? column : -1;
            sortAscending = sort.attribute(QStringLiteral("ascending")) != QLatin1String("0");
        }
        const QDomElement splitter = child(panel, QStringLiteral("Splitter"));
        if (!splitter.isNull()) {
            bool ok = false;
            const double ratio = splitter.attribute(QStringLiteral("ratio")).toDouble(&ok);
            // A ratio of 0 or 1 would hide a pane the user cannot then drag back.
            if (ok && std::isfinite(ratio) && ratio > 0.05 && ratio < 0.95)
                splitterRatio = ratio;
            lowerPaneShown = splitter.attribute(QStringLiteral("lowerPane")) != QLatin1String("0");
        }
    }
    const QDomElement window = child(root, QStringLiteral("Window"));
    windowGeometry =
        QByteArray::fromBase64(window.attribute(QStringLiteral("geometry")).toLatin1());
    windowState = QByteArray::fromBase64(window.attribute(QStringLiteral("state")).toLatin1());
    return true;
}

QString DemoSettings::Save(const QString& path) const
{
    QDomDocument document;
    document.appendChild(document.createProcessingInstruction(
        QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")));
    QDomElement root = document.createElement(kRoot);
    root.setAttribute(QStringLiteral("version"), 1);
    document.appendChild(root);

    QDomElement panel = m_panelXml.documentElement().isNull()
                            ? document.createElement(kPanel)
                            : document.importNode(m_panelXml.documentElement(), true).toElement();
    root.appendChild(panel);
    panel.setAttribute(QStringLiteral("referenceView"), referenceView);
    panel.setAttribute(QStringLiteral("detailsView"), detailsView);
    const auto element = [&](const QString& name) {
        QDomElement found = child(panel, name);
        if (found.isNull())
            found = panel.appendChild(document.createElement(name)).toElement();
        return found;
    };
    element(QStringLiteral("Columns"))
        .setAttribute(QStringLiteral("dip"), joinWidths(columnDipWidths));
    element(QStringLiteral("DetailColumns"))
        .setAttribute(QStringLiteral("dip"), joinWidths(detailColumnDipWidths));
    QDomElement sort = element(QStringLiteral("Sort"));
    sort.setAttribute(QStringLiteral("column"), sortColumn);
    sort.setAttribute(QStringLiteral("ascending"), sortAscending ? 1 : 0);
    QDomElement splitter = element(QStringLiteral("Splitter"));
    splitter.setAttribute(QStringLiteral("ratio"), QString::number(splitterRatio, 'g', 6));
    splitter.setAttribute(QStringLiteral("lowerPane"), lowerPaneShown ? 1 : 0);

    QDomElement window = document.createElement(QStringLiteral("Window"));
    window.setAttribute(QStringLiteral("geometry"), QString::fromLatin1(windowGeometry.toBase64()));
    window.setAttribute(QStringLiteral("state"), QString::fromLatin1(windowState.toBase64()));
    root.appendChild(window);

    const QString target = path.isEmpty() ? ProfilePath() : path;
    QDir().mkpath(QFileInfo(target).absolutePath());
    QSaveFile file(target);
    const QByteArray bytes = document.toByteArray(2);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("The settings cannot be saved to \"%1\": %2.")
            .arg(target, file.errorString());
    return {};
}

void DemoSettings::TakeFrom(const CXrefPanelCtrl& panel)
{
    if (m_panelXml.documentElement().isNull())
        m_panelXml.appendChild(m_panelXml.createElement(kPanel));
    QDomElement element = m_panelXml.documentElement();
    QDomElement tips = child(element, QStringLiteral("TooltipSettings"));
    if (tips.isNull())
        tips = element.appendChild(m_panelXml.createElement(QStringLiteral("TooltipSettings")))
                   .toElement();
    // The panel's save is not const: it reads nothing it changes, but its interface says so.
    const_cast<CXrefPanelCtrl&>(panel).SaveTooltipSettings(tips);

    if (const CTroveListCtrl* list = panel.GetListCtrl()) {
        columnDipWidths = list->GetColumnDipWidths();
        sortColumn = list->GetSortColumn();
        sortAscending = list->IsSortAscending();
    }
    detailColumnDipWidths = panel.GetColumnDipWidths();
    panel.GetLowerGroup(splitterRatio, lowerPaneShown);
    referenceView = int(panel.GetReferenceViewType());
    detailsView = int(panel.GetDetailsViewType());
}

void DemoSettings::ApplyTo(CXrefPanelCtrl& panel) const
{
    if (!m_panelXml.documentElement().isNull())
        panel.LoadTooltipSettings(m_panelXml.documentElement());
    if (detailColumnDipWidths.size() == 2) {
        std::vector<int> widths = detailColumnDipWidths;
        panel.SetDetailColumnDipWidths(widths);
    }
}
