#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

/// Tells the operator that no data is being received, and offers to wait, to choose another
/// port or to end the program.
class frmNoData : public QDialog
{
    Q_OBJECT

public:
    enum Choice { Ok, Setup, Exit };

    explicit frmNoData(QWidget *parent = nullptr);

    [[nodiscard]] Choice choice() const { return m_choice; }

    QLabel *Label1;
    QPushButton *cmdOk;
    QPushButton *cmdSetup;
    QPushButton *cmdExit;

private:
    Choice m_choice = Ok;
};
