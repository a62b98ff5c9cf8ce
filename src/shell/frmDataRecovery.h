#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QListWidget;
class QPushButton;
class Recovery;

/// @brief The dialog that offers the logs of crashed runs: a list with a check box per row,
/// Recover for the ticked rows and Done, which lets the rest go.
///
/// A row's item value (Qt::UserRole) is 0 until its log is saved, then -1.
class frmDataRecovery : public QDialog
{
    Q_OBJECT

public:
    frmDataRecovery(Recovery &recovery, QWidget *parent = nullptr);

    /// Appends a row, unchecked, with item value 0.
    void addRow(const QString &text);
    /// Keeps the rows not yet recovered, in their order, all unchecked.
    void RebuildLogList();

    void cmdRecoverButton_Click();
    void cmdDoneButton_Click();

    std::array<QLabel *, 7> lblPrompt{};
    QListWidget *lstLogFiles = nullptr;
    QPushButton *cmdRecoverButton = nullptr;
    QPushButton *cmdDoneButton = nullptr;

private:
    void lstLogFiles_ItemCheck();

    Recovery &m_recovery;
};
