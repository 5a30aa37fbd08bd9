// Both views' models checked against Qt's model contract while the panel fills, shares, sorts
// and empties them.

#include "ItemFixture.h"

#include <QAbstractItemModelTester>

namespace {

class ModelContractTest : public ItemFixture
{
protected:
    static void collect(QtMsgType type, const QMessageLogContext&, const QString& message)
    {
        if (type != QtDebugMsg && type != QtInfoMsg)
            failures().push_back(message);
    }
    static QStringList& failures()
    {
        static QStringList list;
        return list;
    }
};

TEST_F(ModelContractTest, fillShareSortAndEmptyKeepTheContract)
{
    using Mode = QAbstractItemModelTester::FailureReportingMode;
    failures().clear();
    const QtMessageHandler previous = qInstallMessageHandler(&collect);
    {
        QAbstractItemModelTester listTester(&List(), Mode::Warning);
        QAbstractItemModelTester treeTester(&panel->GetTreeCtrl()->Model(), Mode::Warning);

        panel->BeginUpdate();
        TestXrefItem* a = Add(L"A");
        TestXrefItem* a1 = Add(L"A1", a);
        Add(L"A1x", a1);
        TestXrefItem* b = Add(L"B", nullptr, a);
        Add(L"B1", b);
        panel->EndUpdate();

        panel->BeginUpdate();
        TestXrefItem* c = Add(L"C");
        Add(L"C1", c, a1);
        Add(L"B2", b);
        panel->DeleteTreeItem(*a1);
        delete a1;
        Add(L"C2", c);
        panel->EndUpdate();
        List().FlushChanges();
        panel->GetTreeCtrl()->Model().FlushChanges();

        List().SortRows(
            [](const CTroveListRow& x, const CTroveListRow& y) { return x.name > y.name; });
        panel->DeleteTreeItem(*c);
        delete c;
        // Many scattered rows of one subtree.
        TestXrefItem* d = Add(L"D");
        for (int i = 0; i < 30; ++i) {
            Add(L"D" + std::to_wstring(i), d);
            Add(L"E" + std::to_wstring(i));
        }
        List().SortRows([](const CTroveListRow& x, const CTroveListRow& y) {
            return x.name.mid(1).toInt() < y.name.mid(1).toInt();
        });
        panel->DeleteTreeItem(*d);
        delete d;
        panel->DeleteAllItems();
        root = new TestXrefItem(*panel, true);
        panel->InsertRootItem(*root);
    }
    qInstallMessageHandler(previous);
    EXPECT_TRUE(failures().isEmpty()) << failures().join(QLatin1Char('\n')).toStdString();
}

} // namespace
