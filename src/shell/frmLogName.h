#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

/// @brief The dialog that names the instrument system this copy serves: letters, digits and
/// blanks, at most 25 of them, since the name is also the default name of a saved log.
class frmLogName : public QDialog
{
    Q_OBJECT

public:
    /// OK writes the name into `SystemName` and the caption of `mainWindow`.
    frmLogName(QString &SystemName, QWidget &mainWindow);

    /// The main window's caption under a system name.
    [[nodiscard]] static QString caption(const QString &SystemName);

    QLineEdit *txtLogFileName = nullptr;
    QLabel *lblPrompt = nullptr;
    QPushButton *cmdOKButton = nullptr;
    QPushButton *cmdCancelButton = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void cmdOKButton_Click();

    QString &m_systemName;
    QWidget &m_mainWindow;
};
