#pragma once

#include <QString>

/// What the file commands ask of the window: the heads of its tab strip, the selection that
/// brings a tab forward, and the entry of the time window.
class TabHeads
{
public:
    virtual ~TabHeads() = default;
    /// The head of the tab that shows `Chart(Index)`.
    [[nodiscard]] virtual QString tabCaption(int Index) const = 0;
    virtual void setTabCaption(int Index, const QString &Caption) = 0;
    [[nodiscard]] virtual QString tabToolTip(int Index) const = 0;
    virtual void setTabToolTip(int Index, const QString &ToolTip) = 0;
    /// Selects the tab as a click does, so that the tab switch runs.
    virtual void selectTab(int Index) = 0;
    virtual void setChartTimeText(const QString &Text) = 0;
};
