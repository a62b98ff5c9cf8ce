#pragma once

#include <QWidget>

#include <array>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// `FrameScaleAxis`, the frame under the charts with the three axis panels: UV (blue), time
/// and conductivity (red). It holds the controls; what they do lives in `AxisPanels` and
/// `TimeAxis`.
class AxisFrame : public QWidget
{
    Q_OBJECT

public:
    explicit AxisFrame(QWidget *parent = nullptr);

    /// The most characters that may be typed into the window entry.
    static constexpr int kWindowEntryLength = 6;

    std::array<QGroupBox *, 3> FrameAxis{};
    std::array<QComboBox *, 2> cmbYAxis{};
    /// Index 1 does not exist: the conductivity panel's label is number 2.
    std::array<QLabel *, 3> lblAxis{};
    std::array<QPushButton *, 2> cmdSet{};
    std::array<QLineEdit *, 2> txtYAxisMin{};
    std::array<QLabel *, 2> lblAxisMin{};
    std::array<QRadioButton *, 2> optTimeAxis{};
    QLineEdit *txtChartTime = nullptr;
    QLabel *lblWindow = nullptr;
    QPushButton *cmdSetTime = nullptr;
    /// A diagnostic of the instance table that the operator never sees.
    QPushButton *cmdRegistry = nullptr;
};
