#include "RunContent.h"
#include "TestEnvironment.h"
#include "chart/Quillchart.h"

#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class PrintReport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        RunContent::grow(m_chart, {}, {9000, 12, 1});
        m_chart.setChartTitle(QStringLiteral("Run 42"));
        m_chart.setTimeAxisMax(30.0f);
    }

    void printTo(const QString &pdf)
    {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        m_printer.setOutputFileName(pdf);
        m_chart.setPrinter(&m_printer);
    }

    QTemporaryDir m_dir{testHome() + QStringLiteral("/print-XXXXXX")};
    QPrinter m_printer{QPrinter::HighResolution};
    Quillchart m_chart;
};

} // namespace

TEST_F(PrintReport, EveryWordPrintsOverAsManyPagesAsItNeeds)
{
    QStringList words;
    for (int i = 0; i < 2000; ++i)
        words << QStringLiteral("w%1").arg(i);
    const QString longWord(3000, QLatin1Char('Z'));
    m_chart.AddMethodText(QStringLiteral("Step 1\r\nStep 2"), 1.0f);
    m_chart.SetNotes(words.join(QLatin1Char(' ')) + QStringLiteral("\r\nend ") + longWord);
    QSignalSpy errors(&m_chart, &Quillchart::ChartError);
    const QString pdf = m_dir.filePath(QStringLiteral("report.pdf"));
    printTo(pdf);
    m_chart.PrintChart(true, true, true, 7);
    EXPECT_EQ(errors.size(), 0);

    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    if (!pdftotext.waitForFinished() || pdftotext.exitCode() != 0)
        GTEST_SKIP() << "no pdftotext here";
    const QString text = QString::fromUtf8(pdftotext.readAllStandardOutput());
    EXPECT_GE(text.count(QLatin1Char('\f')), 3) << "pages";
    const QStringList printed = text.split(QRegularExpression(QStringLiteral("\\s+")));
    const QSet<QString> found(printed.begin(), printed.end());
    for (const QString &word : words + QStringList{QStringLiteral("Step"), QStringLiteral("end")})
        EXPECT_TRUE(found.contains(word)) << word.toStdString();
    EXPECT_EQ(text.count(QLatin1Char('Z')), longWord.size());
}

TEST_F(PrintReport, PrinterThatCannotBeWrittenRaisesPrintErrorAndStaysFreeForTheNextChoice)
{
    m_chart.setIndex(2);
    QSignalSpy errors(&m_chart, &Quillchart::ChartError);
    for (const QString &pdf :
         {QString(), m_dir.filePath(QStringLiteral("no/such/dir/report.pdf"))}) {
        printTo(pdf);
        m_chart.PrintChart(true, true, true, 7);
    }
    ASSERT_EQ(errors.size(), 2);
    EXPECT_EQ(errors[1][0].value<qint16>(), 2);
    EXPECT_EQ(errors[1][1].value<qint16>(), -14);
    printTo(m_dir.filePath(QStringLiteral("report.pdf")));
    m_chart.PrintChart(true, true, true, 7);
    EXPECT_EQ(errors.size(), 2);
    EXPECT_GT(QFileInfo(m_dir.filePath(QStringLiteral("report.pdf"))).size(), 0);
}
