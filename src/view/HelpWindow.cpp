#include "view/HelpWindow.h"

#include "runtime/App.h"
#include "runtime/Twips.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QShortcut>
#include <QStyle>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

#include <map>

namespace {

const std::map<int, const char *> kPages{
    {0, "index.html"},        {1, "intro.html"}, {2, "export.html"},   {3, "method.html"},
    {4, "notes.html"},        {5, "print.html"}, {6, "comport.html"},  {8, "savedata.html"},
    {9, "saveselected.html"}, {10, "open.html"}, {11, "savelog.html"},
};

QToolButton *navigationButton(QWidget *parent, QStyle::StandardPixmap icon, const QString &text)
{
    auto *button = new QToolButton(parent);
    button->setIcon(parent->style()->standardIcon(icon));
    button->setText(text);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    return button;
}

} // namespace

HelpWindow::HelpWindow(QWidget *owner)
    : QWidget(owner, Qt::Window)
    , m_browser(new QTextBrowser(this))
    , m_back(navigationButton(this, QStyle::SP_ArrowBack, QStringLiteral("&Back")))
    , m_forward(navigationButton(this, QStyle::SP_ArrowForward, QStringLiteral("&Forward")))
{
    setWindowTitle(App::Title() + QStringLiteral(" Help"));
    auto *index =
        navigationButton(this, QStyle::SP_FileDialogContentsView, QStringLiteral("&Index"));
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_back);
    bar->addWidget(m_forward);
    bar->addWidget(index);
    bar->addStretch();
    auto *column = new QVBoxLayout(this);
    column->addLayout(bar);
    column->addWidget(m_browser);
    m_browser->setSearchPaths({QStringLiteral(":/help")});
    m_browser->setOpenExternalLinks(true);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    connect(m_back, &QToolButton::clicked, m_browser, &QTextBrowser::backward);
    connect(m_forward, &QToolButton::clicked, m_browser, &QTextBrowser::forward);
    connect(index, &QToolButton::clicked, this, [this] { showTopic(0); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    connect(m_browser, &QTextBrowser::backwardAvailable, m_back, &QToolButton::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, m_forward, &QToolButton::setEnabled);
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(App::Title() + QStringLiteral(" Help - ") + m_browser->documentTitle());
    });
    resize(twips(this, 12000), twips(this, 10000));
}

QString HelpWindow::topicPage(int context)
{
    const auto page = kPages.find(context);
    return QStringLiteral("qrc:/help/") +
           QLatin1String(page == kPages.end() ? kPages.at(0) : page->second);
}

void HelpWindow::showTopic(int context)
{
    const Qt::WindowModality modality =
        QApplication::activeModalWidget() && QApplication::activeModalWidget() != this
            ? Qt::ApplicationModal
            : Qt::NonModal;
    if (windowModality() != modality) {
        hide();
        setWindowModality(modality);
    }
    m_browser->setSource(QUrl(topicPage(context)));
    show();
    raise();
    activateWindow();
}
