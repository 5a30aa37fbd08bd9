// A host's profile is text anyone may have edited. Whatever XML it holds, loading the tool-tip
// settings from it must not crash or hang; what loads must save and load back the same; and the
// attribute helpers must read back what they wrote.

#include "panel/XmlHelpers.h"
#include "support/NullXrefPanel.h"

#include <QApplication>
#include <QDomDocument>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

QApplication* g_app = nullptr;
NullXrefPanel* g_panel = nullptr;

bool sameSettings(const ToolTipMenuSettings& a, const ToolTipMenuSettings& b)
{
    return a.style == b.style && a.previewSize == b.previewSize;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    g_app = new QApplication(*argc, *argv);
    g_panel = new NullXrefPanel;
    g_panel->Create(L"References", QRect(0, 0, 300, 400), nullptr, 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QDomDocument document;
    if (!document.setContent(
            QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size))))
        return 0;
    const QDomElement root = document.documentElement();
    for (const QDomNode& node : {QDomNode(document), QDomNode(root), root.firstChild()}) {
        if (!g_panel->LoadTooltipSettings(node))
            continue;
        // What loaded saves onto a fresh element and loads back the same.
        const ToolTipMenuSettings loaded = g_panel->GetToolTipMenuSettings();
        const bool lowerPane = g_panel->IsLowerPaneShown();
        QDomDocument copy;
        QDomElement parent = copy.createElement(QStringLiteral("Profile"));
        QDomElement settings = copy.createElement(QStringLiteral("TooltipSettings"));
        parent.appendChild(settings);
        check(g_panel->SaveTooltipSettings(settings));
        check(g_panel->LoadTooltipSettings(parent));
        check(sameSettings(g_panel->GetToolTipMenuSettings(), loaded));
        check(g_panel->IsLowerPaneShown() == lowerPane);
    }

    // Every attribute of the root reads as a number or not, and a number written reads back.
    const QDomNamedNodeMap attributes = root.attributes();
    for (int i = 0; i < attributes.count() && i < 16; ++i) {
        const std::wstring name = attributes.item(i).nodeName().toStdWString();
        long number = 0;
        double real = 0;
        QString text;
        GetAttributeValue(root, name.c_str(), number);
        GetAttributeValue(root, name.c_str(), real);
        GetAttributeValue(root, name.c_str(), text, -1);
        QDomElement scratch = document.createElement(QStringLiteral("Scratch"));
        SetAttributeValue(scratch, name.c_str(), number);
        long back = number + 1;
        if (GetAttributeValue(scratch, name.c_str(), back) == 1)
            check(back == number);
    }
    return 0;
}
