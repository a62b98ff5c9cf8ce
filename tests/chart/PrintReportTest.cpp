#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

qsizetype pagesOf(const QString &pdf)
{
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("%PDF"))
        return -1;
    return bytes.count("/Type /Page\n") + bytes.count("/Type /Page ") +
           bytes.count("/Type /Page>") + bytes.count("/Type /Page/");
}

class PrintReport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        RunContent::grow(m_chart, {}, {9000, 12, 1});
        m_chart.setChartTitle(QStringLiteral("Run 42"));
        m_chart.setTimeAxisMax(30.0f);
    }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/print-XXXXXX")};
    Quillchart m_chart;
};

} // namespace

TEST_F(PrintReport, LongMethodAndNotesRunOverAsManyPagesAsTheyNeed)
{
    QStringList method;
    for (int i = 0; i < 150; ++i)
        method << QStringLiteral("Step %1: 2.0 ml/min for 5 min").arg(i);
    m_chart.AddMethodText(method.join(QLatin1String("\r\n")), 1.0f);
    m_chart.SetNotes(QStringLiteral("Column 3\r\nFresh buffer"));
    QSignalSpy errors(&m_chart, &Quillchart::ChartError);

    const QString full = m_dir.filePath(QStringLiteral("full.pdf"));
    m_chart.setPrintTarget(QString(), full);
    m_chart.PrintChart(true, true, true, 7);
    EXPECT_EQ(errors.size(), 0);
    EXPECT_GE(pagesOf(full), 3);

    const QString notesOnly = m_dir.filePath(QStringLiteral("notes.pdf"));
    m_chart.setPrintTarget(QString(), notesOnly);
    m_chart.PrintChart(false, false, true, 0);
    EXPECT_EQ(errors.size(), 0);
    EXPECT_EQ(pagesOf(notesOnly), 1);
}

TEST_F(PrintReport, PrinterThatCannotBeWrittenRaisesPrintError)
{
    m_chart.setIndex(2);
    QSignalSpy errors(&m_chart, &Quillchart::ChartError);
    m_chart.setPrintTarget(QString(), m_dir.filePath(QStringLiteral("no/such/dir/report.pdf")));
    m_chart.PrintChart(true, true, true, 7);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_EQ(errors[0][0].value<qint16>(), 2);
    EXPECT_EQ(errors[0][1].value<qint16>(), -14);
}
