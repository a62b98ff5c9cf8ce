#pragma once

#include <QWidget>

class QTextBrowser;
class QToolButton;

/// @brief The operator's help: one page per context number, read from the program's own
/// resources, with back, forward and the index, and links between topics.
class HelpWindow : public QWidget
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget *owner);

    /// Shows the topic of a context number, the index for 0 and for a number without a page.
    /// While a dialog holds the program modal, the help is modal over it, so that it can be
    /// read and closed without closing the dialog first.
    void showTopic(int context);

    /// The resource page of a context number.
    static QString topicPage(int context);

    QTextBrowser *browser() const { return m_browser; }

private:
    QTextBrowser *m_browser;
    QToolButton *m_back;
    QToolButton *m_forward;
};
