#include "views/editors/XrefInPlaceComboBoxCtrl.h"

#include "resources/TroveResources.h"

#include <QAbstractItemView>

namespace {

constexpr unsigned kAttachText = 1072;
constexpr unsigned kOverlayText = 1074;
constexpr unsigned kVariesText = 1133;

} // namespace

CXrefInPlaceComboBoxCtrl::CXrefInPlaceComboBoxCtrl(int item, int subItem,
                                                   const QString& currentText)
    : CInPlaceComboBoxCtrl(item, subItem,
                           {TroveUI::ResString(kAttachText), TroveUI::ResString(kOverlayText)},
                           currentText)
{
    VariesText();
    view()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

CXrefInPlaceComboBoxCtrl::~CXrefInPlaceComboBoxCtrl() = default;

const QString& CXrefInPlaceComboBoxCtrl::VariesText()
{
    static const QString text = TroveUI::ResString(kVariesText);
    return text;
}
