#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

#include <vector>

class CXrefPanelCtrl;

/// What the demo keeps between sessions, in an XML profile in the user's configuration folder.
/// The panel reads and writes its own part (the tool-tip choices) through its
/// LoadTooltipSettings and SaveTooltipSettings; the rest is the host's.
///
///     <XrefDemoProfile version="1">
///       <Panel referenceView="0" detailsView="1">
///         <TooltipSettings TooltipStyle="3" TooltipSize="1" ShowDetail="1"/>
///         <Columns dip="25,22,170,..."/>
///         <DetailColumns dip="120,200"/>
///         <Sort column="2" ascending="1"/>
///         <Splitter ratio="0.6" lowerPane="1"/>
///       </Panel>
///       <Window geometry="(base64)" state="(base64)"/>
///     </XrefDemoProfile>
///
/// A missing, damaged or foreign profile reads as the defaults: a profile is never a reason not
/// to start.
class DemoSettings
{
public:
    /// The profile's path: "profile.xml" in the application's configuration folder.
    static QString ProfilePath();

    /// Reads the profile at @p path (ProfilePath when empty). False, with the defaults kept,
    /// when there is none or it cannot be read.
    bool Load(const QString& path = {});
    /// Writes the profile safely (a temporary file renamed over the old one). An empty text when
    /// done, else why not.
    QString Save(const QString& path = {}) const;

    /// Takes the panel's current layout, sort and tool-tip choices.
    void TakeFrom(const CXrefPanelCtrl& panel);
    /// Hands the panel its tool-tip choices and details column widths; call after Create.
    void ApplyTo(CXrefPanelCtrl& panel) const;

    /// Wide enough for the sample's names, statuses and dates in the docked panel.
    std::vector<int> columnDipWidths = {22, 24, 120, 88, 66, 62, 150, 260};
    std::vector<int> detailColumnDipWidths;
    int sortColumn = -1;
    bool sortAscending = true;
    double splitterRatio = 0.6;
    bool lowerPaneShown = true;
    int referenceView = 0;
    int detailsView = 0;
    QByteArray windowGeometry;
    QByteArray windowState;

private:
    /// The "Panel" element as last loaded or taken; the panel's tool-tip settings live in it.
    QDomDocument m_panelXml;
};
