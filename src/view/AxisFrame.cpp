#include "view/AxisFrame.h"

#include "runtime/Twips.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

/// Blue for the UV axis, red for conductivity, as the traces are drawn. Disabled controls keep
/// the grey of the style, so that a dimmed Set button looks dimmed.
void tint(QWidget *widget, const QColor &colour)
{
    QPalette palette = widget->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        for (const QPalette::ColorRole role :
             {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(group, role, colour);
    widget->setPalette(palette);
}

} // namespace

AxisFrame::AxisFrame(QWidget *parent) : QWidget(parent)
{
    // Left, top, width and height in twips, in the container, as the form was designed. A
    // caption wider in the desktop's font than in the design's takes the room it needs.
    const auto place = [this](QWidget *widget, int left, int top, int width, int height) {
        QSize size(twips(this, width), twips(this, height));
        if (qobject_cast<QLabel *>(widget) || qobject_cast<QRadioButton *>(widget))
            size.setWidth(qMax(size.width(), widget->sizeHint().width()));
        widget->setGeometry(QRect(QPoint(twips(this, left), twips(this, top)), size));
    };
    setFixedSize(twips(this, 7750), twips(this, 1095));

    const char *titles[] = {"UV Axis", "Time Axis", "Conductivity Axis"};
    const int frameLefts[] = {50, 2400, 5400};
    const int frameWidths[] = {2325, 2970, 2325};
    for (int i = 0; i < 3; ++i) {
        FrameAxis[i] = new QGroupBox(QLatin1String(titles[i]), this);
        place(FrameAxis[i], frameLefts[i], 0, frameWidths[i], 1030);
    }

    // The two value axes: full scale above, minimum below, each with its Set button.
    for (int axis = 0; axis < 2; ++axis) {
        QGroupBox *frame = FrameAxis[axis == 0 ? 0 : 2];
        cmbYAxis[axis] = new QComboBox(frame);
        cmbYAxis[axis]->setEditable(true);
        // A typed full scale is taken as typed: no completion to a list value, no adding to
        // the list, and no list pick when the entry is left holding a list value.
        cmbYAxis[axis]->setCompleter(nullptr);
        cmbYAxis[axis]->setInsertPolicy(QComboBox::NoInsert);
        QObject::disconnect(cmbYAxis[axis]->lineEdit(), &QLineEdit::editingFinished, cmbYAxis[axis],
                            nullptr);
        cmbYAxis[axis]->setEditText(axis == 0 ? QStringLiteral("2.000") : QStringLiteral("500.0"));
        place(cmbYAxis[axis], 90, 240, 915, 315);
        QLabel *units =
            new QLabel(axis == 0 ? QStringLiteral("AUFS") : QStringLiteral("mSFS"), frame);
        place(units, 1030, 280, axis == 0 ? 495 : 615, 255);
        lblAxis[axis == 0 ? 0 : 2] = units;
        cmdSet[axis] = new QPushButton(QStringLiteral("Set"), frame);
        cmdSet[axis]->setEnabled(false);
        place(cmdSet[axis], 1560, 230, 650, 400);
        txtYAxisMin[axis] =
            new QLineEdit(axis == 0 ? QStringLiteral("-0.200") : QStringLiteral("0.0"), frame);
        place(txtYAxisMin[axis], 90, axis == 0 ? 600 : 630, 915, 315);
        lblAxisMin[axis] = new QLabel(QStringLiteral("Axis Minimum"), frame);
        place(lblAxisMin[axis], 1030, 700, 1095, 255);
        tint(frame, axis == 0 ? QColor(0, 0, 192) : QColor(192, 0, 0));
    }

    QGroupBox *time = FrameAxis[1];
    optTimeAxis[0] = new QRadioButton(QStringLiteral("Full View"), time);
    optTimeAxis[0]->setChecked(true);
    place(optTimeAxis[0], 120, 290, 1275, 255);
    optTimeAxis[1] = new QRadioButton(QStringLiteral("Window:"), time);
    place(optTimeAxis[1], 120, 680, 975, 255);
    txtChartTime = new QLineEdit(QStringLiteral("10.0"), time);
    place(txtChartTime, 1080, 630, 750, 315);
    lblWindow = new QLabel(QStringLiteral("Minutes"), time);
    place(lblWindow, 1875, 700, 735, 255);
    // A caption that took more room than designed pushes its entry and unit along the row.
    const int overlap = optTimeAxis[1]->geometry().right() + twips(this, 45) - txtChartTime->x();
    if (overlap > 0) {
        txtChartTime->move(txtChartTime->x() + overlap, txtChartTime->y());
        lblWindow->move(lblWindow->x() + overlap, lblWindow->y());
    }
    cmdSetTime = new QPushButton(QStringLiteral("Set"), time);
    cmdSetTime->setEnabled(false);
    place(cmdSetTime, 2200, 230, 650, 400);
    cmdRegistry = new QPushButton(QStringLiteral("Registry"), time);
    cmdRegistry->setVisible(false);
    place(cmdRegistry, 1320, 240, 615, 255);
}
