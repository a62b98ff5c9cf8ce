#pragma once

#include <QDialog>

#include <functional>

class QPlainTextEdit;
class QPushButton;
class Quillchart;

/// @brief The operator's notes of the chart in front, kept with the chart: OK keeps an edit,
/// and any other way out asks about a change before dropping it.
class frmNotes : public QDialog
{
    Q_OBJECT

public:
    /// An edit kept clears `ChartSaved`; `release` releases the tool bar's notes button, which
    /// unloads the form.
    frmNotes(Quillchart &chart, bool &ChartSaved, std::function<void()> release, QWidget *parent);

    /// Asks about a change; `result` is false when the operator chose to stay.
    void CloseNotes(bool &result);

    QPlainTextEdit *txtNotes = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    /// True while a button of the form is closing it, so that the unload does not ask again.
    bool NotesClosing = false;

public slots:
    /// Escape is the Cancel button's.
    void reject() override { cmdCancel_Click(); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();
    [[nodiscard]] bool changed() const;
    void keepEdit();

    Quillchart &m_chart;
    bool &m_chartSaved;
    std::function<void()> m_release;
};
