#include "shell/frmMethod.h"

#include "chart/Quillchart.h"
#include "runtime/HelpContext.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmMethod::frmMethod(const Quillchart &chart, std::function<void()> CloseMethod, QWidget *parent)
    : QDialog(parent)
    , m_closeMethod(std::move(CloseMethod))
{
    setHelpContext(this, 3);
    setWindowTitle(QStringLiteral("Method"));
    txtMethod = new QPlainTextEdit(this);
    txtMethod->setReadOnly(true);
    txtMethod->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtMethod->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtMethod->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QString text = chart.GetMethodText();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    txtMethod->setPlainText(text);
    cmdClose = new QPushButton(QStringLiteral("&OK"), this);
    cmdClose->setDefault(true);
    connect(cmdClose, &QPushButton::clicked, this, &frmMethod::CloseMethod);

    auto *column = new QVBoxLayout(this);
    column->addWidget(txtMethod);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cmdClose);
    column->addLayout(row);
    // Wide enough for an instrument's line of 80 columns.
    resize(txtMethod->fontMetrics().horizontalAdvance(QString(84, QLatin1Char('M'))), 420);
}
