#pragma once

#include <QDialog>

#include <functional>

class QPlainTextEdit;
class QPushButton;
class Quillchart;

/// @brief The method text the instrument sent with the chart in front, read only, in a
/// fixed-pitch font so that the instrument's columns line up.
class frmMethod : public QDialog
{
    Q_OBJECT

public:
    /// `CloseMethod` releases the tool bar's method button, which unloads the form.
    frmMethod(const Quillchart &chart, std::function<void()> CloseMethod, QWidget *parent);

    void CloseMethod() { m_closeMethod(); }

    QPlainTextEdit *txtMethod = nullptr;
    QPushButton *cmdClose = nullptr;

public slots:
    /// The window's close box and Escape close it as OK does.
    void reject() override { CloseMethod(); }

private:
    std::function<void()> m_closeMethod;
};
