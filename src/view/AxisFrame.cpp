#include "view/AxisFrame.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

/// Blue for the UV axis, red for conductivity, as the traces are drawn.
void tint(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, colour);
    palette.setColor(QPalette::Text, colour);
    palette.setColor(QPalette::ButtonText, colour);
    widget->setPalette(palette);
}

} // namespace

AxisFrame::AxisFrame(QWidget *parent) : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);

    const QColor uvBlue(0, 0, 192);
    const QColor condRed(192, 0, 0);
    const char *titles[] = {"UV Axis", "Time Axis", "Conductivity Axis"};
    for (int i = 0; i < 3; ++i) {
        FrameAxis[i] = new QGroupBox(QLatin1String(titles[i]), this);
        row->addWidget(FrameAxis[i]);
    }

    // The two value axes: full scale above, minimum below, each with its Set button.
    for (int axis = 0; axis < 2; ++axis) {
        QGroupBox *frame = FrameAxis[axis == 0 ? 0 : 2];
        auto *grid = new QGridLayout(frame);
        cmbYAxis[axis] = new QComboBox(frame);
        cmbYAxis[axis]->setEditable(true);
        // A typed full scale is taken as typed: no completion to a list value, no adding to
        // the list, and no list pick when the entry is left holding a list value.
        cmbYAxis[axis]->setCompleter(nullptr);
        cmbYAxis[axis]->setInsertPolicy(QComboBox::NoInsert);
        QObject::disconnect(cmbYAxis[axis]->lineEdit(), &QLineEdit::editingFinished,
                            cmbYAxis[axis], nullptr);
        cmbYAxis[axis]->setEditText(axis == 0 ? QStringLiteral("2.000") : QStringLiteral("500.0"));
        cmbYAxis[axis]->setMinimumContentsLength(6);
        lblAxis[axis == 0 ? 0 : 2] =
            new QLabel(axis == 0 ? QStringLiteral("AUFS") : QStringLiteral("mSFS"), frame);
        cmdSet[axis] = new QPushButton(QStringLiteral("Set"), frame);
        cmdSet[axis]->setEnabled(false);
        txtYAxisMin[axis] =
            new QLineEdit(axis == 0 ? QStringLiteral("-0.200") : QStringLiteral("0.0"), frame);
        txtYAxisMin[axis]->setMaximumWidth(cmbYAxis[axis]->sizeHint().width());
        lblAxisMin[axis] = new QLabel(QStringLiteral("Axis Minimum"), frame);
        grid->addWidget(cmbYAxis[axis], 0, 0);
        grid->addWidget(lblAxis[axis == 0 ? 0 : 2], 0, 1);
        grid->addWidget(cmdSet[axis], 0, 2);
        grid->addWidget(txtYAxisMin[axis], 1, 0);
        grid->addWidget(lblAxisMin[axis], 1, 1, 1, 2);
        tint(frame, axis == 0 ? uvBlue : condRed);
    }

    auto *timeGrid = new QGridLayout(FrameAxis[1]);
    optTimeAxis[0] = new QRadioButton(QStringLiteral("Full View"), FrameAxis[1]);
    optTimeAxis[0]->setChecked(true);
    optTimeAxis[1] = new QRadioButton(QStringLiteral("Window:"), FrameAxis[1]);
    txtChartTime = new QLineEdit(QStringLiteral("10.0"), FrameAxis[1]);
    txtChartTime->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000.00")) + 12);
    lblWindow = new QLabel(QStringLiteral("Minutes"), FrameAxis[1]);
    cmdSetTime = new QPushButton(QStringLiteral("Set"), FrameAxis[1]);
    cmdSetTime->setEnabled(false);
    cmdRegistry = new QPushButton(QStringLiteral("Registry"), FrameAxis[1]);
    cmdRegistry->setVisible(false);
    timeGrid->addWidget(optTimeAxis[0], 0, 0, 1, 3);
    timeGrid->addWidget(cmdSetTime, 0, 3);
    timeGrid->addWidget(optTimeAxis[1], 1, 0);
    timeGrid->addWidget(txtChartTime, 1, 1);
    timeGrid->addWidget(lblWindow, 1, 2, 1, 2);
    adjustSize();
}
