// The reference report of the demo host: from the File menu's command and from the command line.

#include "DemoWindowFixture.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

class DemoReportTest : public DemoWindowTest
{
protected:
    /// Runs the demo program with @p arguments; its exit code, with what it printed to stderr
    /// in @p errors.
    int RunProgram(const QStringList& arguments, QString* errors = nullptr)
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        // The program's profile and sample stay in the scratch folder.
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                           m_dir.filePath(QStringLiteral("cfg")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_dir.filePath(QStringLiteral("data")));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(KVX_DEMO_PROGRAM), arguments);
        EXPECT_TRUE(program.waitForFinished(60000));
        if (errors)
            *errors = QString::fromLocal8Bit(program.readAllStandardError());
        return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
    }

    QString Scratch(const QString& name) const { return m_dir.filePath(name); }
};

TEST_F(DemoReportTest, menuCommandWritesTheWholeTreeWithThumbnails)
{
    Open();
    const QString path = Scratch(QStringLiteral("site references"));
    m_dialogs.Choose({path});
    m_window->Commands().ExportReportWithDialog();
    ASSERT_EQ(m_dialogs.Count(), 1);
    // A name without a suffix becomes a web page.
    const QByteArray html = Bytes(path + QStringLiteral(".html"));
    ASSERT_FALSE(html.isEmpty()) << Panel().Message().toStdString();
    EXPECT_TRUE(Panel().Message().contains(QLatin1String("Wrote the report")));

    EXPECT_TRUE(html.contains("External References of Harbour site.dwg"));
    // Grid is attached to the site and nested in Columns: it is in the report once per place.
    EXPECT_EQ(html.count("<span>Grid</span>"), 2);
    EXPECT_TRUE(html.contains("<span>Furniture</span>"));
    // The sample's drawings and photos carry pictures.
    EXPECT_GE(html.count("<img src=\"data:image/png;base64,"), 3);
    const QRegularExpression unresolved(
        QStringLiteral("<tr class=\"unresolved[^>]*><td class=\"name\">.*Title block A1"));
    EXPECT_TRUE(unresolved.match(QString::fromUtf8(html)).hasMatch());
}

TEST_F(DemoReportTest, menuCommandWritesCsvByItsSuffixAndShowsAFailure)
{
    Open();
    const QString csv = Scratch(QStringLiteral("refs.CSV"));
    EXPECT_EQ(m_window->Commands().ExportReport(csv), QString());
    const QList<QByteArray> lines = Bytes(csv).split('\n');
    ASSERT_GT(lines.size(), 3);
    EXPECT_TRUE(lines[0].endsWith("Found at,Saved path\r"));
    EXPECT_TRUE(lines[1].startsWith("Harbour site,0,"));
    EXPECT_TRUE(Bytes(csv).contains("\r\nGrid,1,"));
    EXPECT_TRUE(Bytes(csv).contains("\r\nGrid,2,"));

    const QString fault = m_window->Commands().ExportReport(csv + QStringLiteral("/inside.html"));
    EXPECT_FALSE(fault.isEmpty());
    EXPECT_EQ(Panel().Message(), fault);
}

TEST_F(DemoReportTest, commandLineWritesTheReportAndFailsLoudly)
{
    const QString html = Scratch(QStringLiteral("out.html"));
    QString errors;
    ASSERT_EQ(RunProgram({QStringLiteral("--report"), html, m_drawing}, &errors), 0)
        << errors.toStdString();
    EXPECT_TRUE(Bytes(html).contains("<span>Building A</span>"));

    const QString csv = Scratch(QStringLiteral("out.csv"));
    ASSERT_EQ(RunProgram({QStringLiteral("--report=") + csv, m_drawing}, &errors), 0)
        << errors.toStdString();
    EXPECT_TRUE(Bytes(csv).contains("\r\nBuilding A,1,"));

    EXPECT_NE(
        RunProgram({QStringLiteral("--report"), Scratch(QStringLiteral("out.txt")), m_drawing},
                   &errors),
        0);
    EXPECT_TRUE(errors.contains(QLatin1String(".csv or .html"))) << errors.toStdString();

    EXPECT_NE(RunProgram({QStringLiteral("--report"), html + QStringLiteral("/x.html"), m_drawing},
                         &errors),
              0);
    EXPECT_TRUE(errors.contains(QLatin1String("Cannot write the report"))) << errors.toStdString();

    EXPECT_NE(RunProgram({QStringLiteral("--report"), html,
                          Scratch(QStringLiteral("no such drawing.dwg"))},
                         &errors),
              0);
    EXPECT_FALSE(errors.isEmpty());
}

} // namespace
